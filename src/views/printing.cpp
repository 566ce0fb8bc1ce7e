#include "views/printing.h"

#include "core/plant_state.h"
#include "curves/curve_store.h"
#include "views/KM_Kurve.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QPrintDialog>
#include <QPrinter>
#include <QWidget>
#include <algorithm>

namespace kal {

namespace {

/// Screen pixels an inch: the size a window has on the paper at 100 %.
constexpr double BILDSCHIRM_DPI = 96.0;
/// Size of the text of text pages at a zoom of 100 %, and of their titles.
constexpr double TEXT_PUNKTE = 10.0;
constexpr double TITEL_PUNKTE = 16.0;

const QString SCHRIFT = QStringLiteral("DejaVu Sans Mono");

/// The print margins of the settings, tenths of a millimetre, in printer pixels.
QPointF rand(const QPrinter &d)
{
    const double proMm = d.resolution() / 25.4;
    return {plant.Druck_Rand_X / 10.0 * proMm, plant.Druck_Rand_Y / 10.0 * proMm};
}

} // namespace

PrintJob::PrintJob(QPrinter &drucker) : m_drucker(drucker) {}

PrintJob::~PrintJob()
{
    if (m_maler.isActive())
        m_maler.end(); // the document ends
}

bool PrintJob::newPage(QPageLayout::Orientation lage)
{
    // A new orientation holds from the next page on.
    m_drucker.setPageOrientation(lage);
    if (!m_maler.isActive()) {
        if (m_seiten > 0 || !m_maler.begin(&m_drucker))
            return false;
    } else if (!m_drucker.newPage()) {
        return false;
    }
    ++m_seiten;
    return true;
}

bool PrintJob::Seite_Drucken(QWidget *fenster, QPageLayout::Orientation lage)
{
    if (!fenster || !newPage(lage))
        return false;
    const QPixmap bild = fenster->grab();
    const QSizeF groesse = bild.deviceIndependentSize();
    const QRectF papier = m_drucker.pageLayout().paintRectPixels(m_drucker.resolution());
    const double faktor = m_drucker.resolution() / BILDSCHIRM_DPI;
    const int zoom = Druck_Zoom(papier.width(), papier.height(), groesse.width() * faktor, groesse.height() * faktor);
    const double m = faktor * zoom / 100.0;
    m_maler.setRenderHint(QPainter::SmoothPixmapTransform);
    m_maler.drawPixmap(QRectF(0, 0, groesse.width() * m, groesse.height() * m), bild, QRectF(bild.rect()));
    return true;
}

bool PrintJob::textPages(const std::vector<PrintPage> &seiten, QPageLayout::Orientation lage, int zoom)
{
    if (seiten.empty())
        return true;
    // One text size for all pages: the zoom of the settings, smaller where the
    // widest line or the longest page would not fit the paper.
    m_drucker.setPageOrientation(lage);
    const QRectF papier = m_drucker.pageLayout().paintRectPixels(m_drucker.resolution());
    const QPointF r = rand(m_drucker);
    const double breite = std::max(1.0, papier.width() - 2 * r.x());
    const double hoehe = std::max(1.0, papier.height() - 2 * r.y());
    size_t zeilen = 1;
    for (const PrintPage &s : seiten)
        zeilen = std::max(zeilen, s.size() + 1);
    QFont probe(SCHRIFT);
    probe.setPointSizeF(TEXT_PUNKTE);
    const QFontMetricsF fm(probe, &m_drucker);
    double punkte = TEXT_PUNKTE * std::clamp(zoom, ZOOM_MIN, ZOOM_MAX) / 100.0;
    punkte = std::min(punkte, TEXT_PUNKTE * breite / (printWidth(seiten) * fm.horizontalAdvance(QLatin1Char('0'))));
    punkte = std::min(punkte, TEXT_PUNKTE * hoehe / (zeilen * fm.lineSpacing()));
    // The lines of the title size never widen the text: a long title gets
    // smaller on its own until it fits the paper.
    int titelSpalten = 1;
    for (const PrintPage &s : seiten)
        for (const Druck_Zeile &z : s)
            if (z.gross)
                for (const Druck_Text &t : z.teile)
                    titelSpalten = std::max<int>(titelSpalten, t.spalte + int(t.text.size()) - 1);
    QFont text(SCHRIFT), titel(SCHRIFT);
    text.setPointSizeF(std::max(2.0, punkte));
    titel.setBold(true);
    titel.setPointSizeF(TEXT_PUNKTE);
    const double titelBreite = QFontMetricsF(titel, &m_drucker).horizontalAdvance(QLatin1Char('0'));
    titel.setPointSizeF(std::max(2.0, std::min(punkte * TITEL_PUNKTE / TEXT_PUNKTE,
                                               TEXT_PUNKTE * breite / (titelSpalten * titelBreite))));

    for (const PrintPage &s : seiten) {
        if (!newPage(lage))
            return false;
        m_maler.setPen(Qt::black);
        double y = r.y();
        for (const Druck_Zeile &z : s) {
            const QFont &f = z.gross ? titel : text;
            m_maler.setFont(f);
            const QFontMetricsF zm(f, &m_drucker);
            const double spalte = QFontMetricsF(text, &m_drucker).horizontalAdvance(QLatin1Char('0'));
            for (const Druck_Text &t : z.teile)
                m_maler.drawText(QPointF(r.x() + (t.spalte - 1) * spalte, y + zm.ascent()), t.text);
            y += zm.lineSpacing();
        }
    }
    return true;
}

void setPdfOutput(QPrinter &drucker, const QString &pfad)
{
    drucker.setOutputFormat(QPrinter::PdfFormat);
    drucker.setOutputFileName(pfad);
    drucker.setPageSize(QPageSize(QPageSize::A4));
    drucker.setCreator(QStringLiteral("Kalmeron"));
}

bool printWindow(QPrinter &drucker, QWidget *fenster, int kopien, bool mitInfo)
{
    const QPageLayout::Orientation lage = drucker.pageLayout().orientation();
    const std::vector<PrintPage> info =
        mitInfo ? infoPages(curveInfoHead(), Kurve.Info_Text) : std::vector<PrintPage>{};
    PrintJob auftrag(drucker);
    for (int k = 0; k < std::max(1, kopien); ++k) {
        // A failing page ends nothing: the job goes on with the next one.
        auftrag.Seite_Drucken(fenster, lage);
        auftrag.textPages(info, QPageLayout::Portrait, plant.Druck_Prozent);
    }
    return auftrag.seiten() > 0;
}

bool askPrintDialog(QPrinter &drucker, QWidget *eltern, int &kopien)
{
    drucker.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&drucker, eltern);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    kopien = std::max(1, drucker.copyCount());
    drucker.setCopyCount(1);
    return true;
}

QString askPdfFile(QWidget *eltern, const QString &vorschlag)
{
    QString pfad = QFileDialog::getSaveFileName(eltern, QStringLiteral("Export PDF…"), vorschlag,
                                                QStringLiteral("PDF (*.pdf)"));
    if (!pfad.isEmpty() && QFileInfo(pfad).suffix().isEmpty())
        pfad += QStringLiteral(".pdf");
    return pfad;
}

bool printList(QPrinter &drucker, const ListHead &kopf, const QStringList &kopfZeilen, const QStringList &zeilen,
                   int kopien)
{
    const std::vector<PrintPage> seiten = listPages(kopf, kopfZeilen, zeilen);
    const QPageLayout::Orientation lage = drucker.pageLayout().orientation();
    PrintJob auftrag(drucker);
    for (int k = 0; k < std::max(1, kopien); ++k)
        auftrag.textPages(seiten, lage, plant.Druck_Prozent);
    return auftrag.seiten() > 0;
}

namespace {

/// Sets up the printer for a print button; false when cancelled.
bool druckerWaehlen(QPrinter &drucker, QWidget *fenster, bool pdf, const QString &vorschlag, int &kopien)
{
    kopien = 1;
    if (!pdf)
        return askPrintDialog(drucker, fenster, kopien);
    const QString datei = askPdfFile(fenster, vorschlag);
    if (datei.isEmpty())
        return false;
    setPdfOutput(drucker, datei);
    drucker.setPageOrientation(QPageLayout::Landscape);
    return true;
}

} // namespace

void outputWindow(QWidget *fenster, bool pdf, const QString &vorschlag, bool mitInfo)
{
    QPrinter drucker(QPrinter::HighResolution);
    int kopien = 1;
    if (druckerWaehlen(drucker, fenster, pdf, vorschlag, kopien))
        printWindow(drucker, fenster, kopien, mitInfo);
}

void outputList(QWidget *fenster, bool pdf, const QString &vorschlag, const ListHead &kopf,
                    const QStringList &kopfZeilen, const QStringList &zeilen)
{
    QPrinter drucker(QPrinter::HighResolution);
    int kopien = 1;
    if (druckerWaehlen(drucker, fenster, pdf, vorschlag, kopien))
        printList(drucker, kopf, kopfZeilen, zeilen, kopien);
}

bool writeCurvePdf(const QString &ziel)
{
    QPrinter drucker(QPrinter::HighResolution);
    setPdfOutput(drucker, ziel);
    drucker.setPageOrientation(QPageLayout::Landscape);
    // The window as the operator sees it after loading, never on a screen.
    auto *fenster = new KM_Kurve;
    fenster->setAttribute(Qt::WA_DontShowOnScreen);
    fenster->setAttribute(Qt::WA_DeleteOnClose, false);
    fenster->load();
    fenster->resize(1100, 640);
    fenster->show();
    QApplication::processEvents();
    const bool ok = printWindow(drucker, fenster, 1, true);
    delete fenster;
    return ok;
}

} // namespace kal
