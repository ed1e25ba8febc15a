#include "PropertyGridLayout.h"

#include <wx/propgrid/propgrid.h>

void KeepLabelsReadable(wxPropertyGrid* grid) {
    grid->Bind(wxEVT_SIZE, [grid](wxSizeEvent& event) {
        event.Skip();
        // After the grid has taken its new size: the library measures the labels then.
        grid->CallAfter([grid] { grid->SetSplitterLeft(true); });
    });
}
