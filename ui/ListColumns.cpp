#include "ListColumns.h"

#include <wx/listctrl.h>

namespace {
constexpr int kHeaderPadding = 16;  // the header's own margins and its sort mark
}

void FitColumnHeaders(wxListCtrl& list) {
    for (int column = 0; column < list.GetColumnCount(); ++column) {
        wxListItem header;
        header.SetMask(wxLIST_MASK_TEXT);
        list.GetColumn(column, header);
        const int needed = list.GetTextExtent(header.GetText()).x + kHeaderPadding;
        if (list.GetColumnWidth(column) < needed)
            list.SetColumnWidth(column, needed);
    }
}
