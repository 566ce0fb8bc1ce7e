#pragma once
// What a printed page holds, without a printer: the zoom at which a window's
// image fits the paper, and the text pages of the curve window's info text
// and of the value lists, line by line with each text at its column.
//
// Text pages are laid out on a grid of character columns (1-based) and lines;
// the painter in the views turns a column into a distance from the left
// margin. A page head is repeated on every page and carries "Seite" and the
// page number.

#include <QString>
#include <QStringList>
#include <vector>

namespace kal {

constexpr int ZOOM_MIN = 10;
constexpr int ZOOM_MAX = 100;
/// Lines of the info text per printed page (`Druck_Zeilen_Text`).
constexpr int DRUCK_ZEILEN_TEXT = 60;
/// Rows of a value list per printed page (`Druck_Zeilen_Liste`).
constexpr int DRUCK_ZEILEN_LISTE = 40;
/// An info text shorter than this prints no text page.
constexpr int INFO_MIN_ZEICHEN = 41;

/// `Seite_Drucken`, the zoom in percent at which a window of `fensterBreite`
/// x `fensterHoehe` fits a page of `druckBreite` x `druckHoehe` (same unit):
/// the smaller of the two fits, then at most 100 and at least 10.
int Druck_Zoom(double druckBreite, double druckHoehe, double fensterBreite, double fensterHoehe);

/// A text at a column.
struct Druck_Text {
    int spalte = 1;
    QString text;
};
/// One printed line; `gross` prints it in the title size (16 points).
struct Druck_Zeile {
    std::vector<Druck_Text> teile;
    bool gross = false;
};
using PrintPage = std::vector<Druck_Zeile>;

/// The labels of the batch the info pages carry in their head.
struct InfoHead {
    QString titel;             ///< the window's title
    QString name, charge;      ///< first label line, columns 8 and 30
    QString start, ende;       ///< second label line, columns 8 and 30
};

/// `Info_Drucken`: the info text split at CR LF, each line at column 10,
/// `zeilen` lines a page under the head; no page below 41 characters.
std::vector<PrintPage> infoPages(const InfoHead &kopf, const QString &info, int zeilen = DRUCK_ZEILEN_TEXT);

/// The head of a printed value list.
struct ListHead {
    QString titel;   ///< column 10
    QString datei;   ///< column 80
    QString name;    ///< column 10 of the second line
    QString datum;   ///< today, after "Print  " at column 120
};

/// List printing: per page the head (title, file, "Seite n"; name and the
/// print date), the two header rows of the list, then up to `zeilen` rows at
/// column 10. An empty list still prints its head.
std::vector<PrintPage> listPages(const ListHead &kopf, const QStringList &kopfZeilen, const QStringList &zeilen,
                                      int proSeite = DRUCK_ZEILEN_LISTE);

/// The head of the info pages from the batch on view in the curve window.
InfoHead curveInfoHead();
/// The head of the printed value list of the batch on view, printed today.
ListHead curveListHead();

/// The widest line of pages in columns, title lines aside (a text at column
/// c of n characters ends at column c + n - 1).
int printWidth(const std::vector<PrintPage> &seiten);

} // namespace kal
