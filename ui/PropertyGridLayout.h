#pragma once
// Property grids keep their label column as wide as their longest label, so that no label is
// cut, and give the values the rest of the width, whenever the grid changes size.
class wxPropertyGrid;

void KeepLabelsReadable(wxPropertyGrid* grid);
