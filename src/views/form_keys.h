#pragma once
// Pieces the program forms share: the row of function keys Taste(0..7) under
// a form, and the page in front for printing (`Aktive_Seite`) kept while a
// form has the focus.

#include <QBoxLayout>
#include <QPushButton>
#include <array>
#include <functional>

class QListWidget;

namespace kal {

/// Eight keys in one row at the foot of `layout`; a click calls `gedrueckt`
/// with the key's index.
std::array<QPushButton *, 8> keyRow(QWidget *form, QBoxLayout *layout, const std::function<void(int)> &gedrueckt);

/// The head lines of a list of fixed-width rows: a list of `zeilen` lines in
/// the rows' font that stands above `liste` and scrolls sideways with it.
QListWidget *listHeader(QWidget *form, QListWidget *liste, int zeilen);

/// Sets `Aktive_Seite` to `seite` whenever the focus enters the form.
void setPageOnFocus(QWidget *form, int seite);

} // namespace kal
