#pragma once

class wxListCtrl;

// Widens every column of a report list that is narrower than its header's text.
void FitColumnHeaders(wxListCtrl& list);
