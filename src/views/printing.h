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
class PrintJob {
public:
    explicit PrintJob(QPrinter &drucker);
    ~PrintJob();
    PrintJob(const PrintJob &) = delete;
    PrintJob &operator=(const PrintJob &) = delete;

    /// `Seite_Drucken(Fenster)`: the window's image on a page of the given
    /// orientation. False when the printer could not be opened.
    bool Seite_Drucken(QWidget *fenster, QPageLayout::Orientation lage);
    /// Text pages at the zoom `Druck_Zoom` (percent of the text size).
    bool textPages(const std::vector<PrintPage> &seiten, QPageLayout::Orientation lage, int zoom);
    /// Pages printed so far.
    int seiten() const { return m_seiten; }

private:
    bool newPage(QPageLayout::Orientation lage);

    QPrinter &m_drucker;
    QPainter m_maler;
    int m_seiten = 0;
};

/// A printer that writes the PDF file `pfad` (A4).
void setPdfOutput(QPrinter &drucker, const QString &pfad);

/// `mnuPrintForm` for one window: `kopien` times its image, each followed by
/// the info pages when `mitInfo` (the curve window). False when nothing could
/// be printed.
bool printWindow(QPrinter &drucker, QWidget *fenster, int kopien, bool mitInfo);

/// The print dialog preset to landscape; false when cancelled. The number of
/// copies it leaves is taken out of the printer into `kopien` (the job prints
/// them itself).
bool askPrintDialog(QPrinter &drucker, QWidget *eltern, int &kopien);

/// "Export PDF…": asks for a file name (beside the batch files' CSV folder)
/// and returns it; "" when cancelled.
QString askPdfFile(QWidget *eltern, const QString &vorschlag);

/// Prints the value list (head, header rows, rows), `kopien` times.
bool printList(QPrinter &drucker, const ListHead &kopf, const QStringList &kopfZeilen, const QStringList &zeilen,
                   int kopien);

/// A print button of a window: with `pdf` "Export PDF…" (a file asked for,
/// `vorschlag` offered), else the print dialog; then the window's image
/// (with the info pages of the curve window when `mitInfo`). Cancel ends
/// quietly.
void outputWindow(QWidget *fenster, bool pdf, const QString &vorschlag, bool mitInfo);
/// The same for a value list: its text pages with the head `kopf`.
void outputList(QWidget *fenster, bool pdf, const QString &vorschlag, const ListHead &kopf,
                    const QStringList &kopfZeilen, const QStringList &zeilen);

/// The headless PDF of a batch: the curve window loaded with `Kurve_Datei`
/// as after loading (the whole batch on one page), then its info pages.
/// False when the file could not be written.
bool writeCurvePdf(const QString &ziel);

} // namespace kal
