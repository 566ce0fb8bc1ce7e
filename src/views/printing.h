#pragma once
// Printing on the platform's printer, and PDF files through the same path: a
// window prints as its image, zoomed to fit the paper (at most 100 %, at
// least 10 %), in the orientation left in the print dialog; the curve window
// adds the text pages of its info text in portrait; value lists print as
// text pages with their head. A PDF file as the target needs no printer.

#include "curves/print_layout.h"

#include <QPageLayout>
#include <QPainter>
#include <QString>

class QPrinter;
class QWidget;

namespace kal {

/// One print job: pages in order on one printer, each in its own orientation.
class Druckauftrag {
public:
    explicit Druckauftrag(QPrinter &drucker);
    ~Druckauftrag();
    Druckauftrag(const Druckauftrag &) = delete;
    Druckauftrag &operator=(const Druckauftrag &) = delete;

    /// `Seite_Drucken(Fenster)`: the window's image on a page of the given
    /// orientation. False when the printer could not be opened.
    bool Seite_Drucken(QWidget *fenster, QPageLayout::Orientation lage);
    /// Text pages at the zoom `Druck_Zoom` (percent of the text size).
    bool Textseiten(const std::vector<Druck_Seite> &seiten, QPageLayout::Orientation lage, int zoom);
    /// Pages printed so far.
    int seiten() const { return m_seiten; }

private:
    bool neueSeite(QPageLayout::Orientation lage);

    QPrinter &m_drucker;
    QPainter m_maler;
    int m_seiten = 0;
};

/// A printer that writes the PDF file `pfad` (A4).
void PDF_Drucker(QPrinter &drucker, const QString &pfad);

/// `mnuPrintForm` for one window: `kopien` times its image, each followed by
/// the info pages when `mitInfo` (the curve window). False when nothing could
/// be printed.
bool Fenster_Drucken(QPrinter &drucker, QWidget *fenster, int kopien, bool mitInfo);

/// The print dialog preset to landscape; false when cancelled. The number of
/// copies it leaves is taken out of the printer into `kopien` (the job prints
/// them itself).
bool Druckdialog(QPrinter &drucker, QWidget *eltern, int &kopien);

/// "Export PDF…": asks for a file name (beside the batch files' CSV folder)
/// and returns it; "" when cancelled.
QString PDF_Datei_Fragen(QWidget *eltern, const QString &vorschlag);

/// Prints the value list (head, header rows, rows), `kopien` times.
bool Liste_Drucken(QPrinter &drucker, const Liste_Kopf &kopf, const QStringList &kopfZeilen, const QStringList &zeilen,
                   int kopien);

/// A print button of a window: with `pdf` "Export PDF…" (a file asked for,
/// `vorschlag` offered), else the print dialog; then the window's image
/// (with the info pages of the curve window when `mitInfo`). Cancel ends
/// quietly.
void Fenster_Ausgeben(QWidget *fenster, bool pdf, const QString &vorschlag, bool mitInfo);
/// The same for a value list: its text pages with the head `kopf`.
void Liste_Ausgeben(QWidget *fenster, bool pdf, const QString &vorschlag, const Liste_Kopf &kopf,
                    const QStringList &kopfZeilen, const QStringList &zeilen);

/// The headless PDF of a batch: the curve window loaded with `Kurve_Datei`
/// as after loading (the whole batch on one page), then its info pages.
/// False when the file could not be written.
bool Kurve_PDF(const QString &ziel);

} // namespace kal
