#pragma once

#include "ui/RowList.h"

namespace krx::ui {

// What screen readers and other assistive programs say of controls, worked out from the model alone
// so that every port tells the same.

// The name of a control: its own words, or those that stand before an input. A grid with a single
// heading bears that; what has nothing of the kind bears the form's caption.
String SpokenName(const Control& control);
// The character that reaches it together with Alt, its own or that of its label; 0 without one.
char16_t SpokenKey(const Control& control);

// A row by its main cell, and what its other cells say, each behind the title of its column.
String SpokenRow(const RowList& list, int row);
String SpokenDetails(const RowList& list, int row);

}  // namespace krx::ui
