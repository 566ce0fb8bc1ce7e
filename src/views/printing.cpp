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

Druckauftrag::Druckauftrag(QPrinter &drucker) : m_drucker(drucker) {}

Druckauftrag::~Druckauftrag()
{
    if (m_maler.isActive())
        m_maler.end(); // the document ends
}

bool Druckauftrag::neueSeite(QPageLayout::Orientation lage)
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

bool Druckauftrag::Seite_Drucken(QWidget *fenster, QPageLayout::Orientation lage)
{
    if (!fenster || !neueSeite(lage))
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

bool Druckauftrag::Textseiten(const std::vector<Druck_Seite> &seiten, QPageLayout::Orientation lage, int zoom)
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
    for (const Druck_Seite &s : seiten)
        zeilen = std::max(zeilen, s.size() + 1);
    QFont probe(SCHRIFT);
    probe.setPointSizeF(TEXT_PUNKTE);
    const QFontMetricsF fm(probe, &m_drucker);
    double punkte = TEXT_PUNKTE * std::clamp(zoom, ZOOM_MIN, ZOOM_MAX) / 100.0;
    punkte = std::min(punkte, TEXT_PUNKTE * breite / (Druck_Breite(seiten) * fm.horizontalAdvance(QLatin1Char('0'))));
    punkte = std::min(punkte, TEXT_PUNKTE * hoehe / (zeilen * fm.lineSpacing()));
    // The lines of the title size never widen the text: a long title gets
    // smaller on its own until it fits the paper.
    int titelSpalten = 1;
    for (const Druck_Seite &s : seiten)
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

    for (const Druck_Seite &s : seiten) {
        if (!neueSeite(lage))
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

void PDF_Drucker(QPrinter &drucker, const QString &pfad)
{
    drucker.setOutputFormat(QPrinter::PdfFormat);
    drucker.setOutputFileName(pfad);
    drucker.setPageSize(QPageSize(QPageSize::A4));
    drucker.setCreator(QStringLiteral("Kalmeron"));
}

bool Fenster_Drucken(QPrinter &drucker, QWidget *fenster, int kopien, bool mitInfo)
{
    const QPageLayout::Orientation lage = drucker.pageLayout().orientation();
    const std::vector<Druck_Seite> info =
        mitInfo ? Info_Seiten(Kurve_Info_Kopf(), Kurve.Info_Text) : std::vector<Druck_Seite>{};
    Druckauftrag auftrag(drucker);
    for (int k = 0; k < std::max(1, kopien); ++k) {
        // A failing page ends nothing: the job goes on with the next one.
        auftrag.Seite_Drucken(fenster, lage);
        auftrag.Textseiten(info, QPageLayout::Portrait, plant.Druck_Prozent);
    }
    return auftrag.seiten() > 0;
}

bool Druckdialog(QPrinter &drucker, QWidget *eltern, int &kopien)
{
    drucker.setPageOrientation(QPageLayout::Landscape);
    QPrintDialog dialog(&drucker, eltern);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    kopien = std::max(1, drucker.copyCount());
    drucker.setCopyCount(1);
    return true;
}

QString PDF_Datei_Fragen(QWidget *eltern, const QString &vorschlag)
{
    QString pfad = QFileDialog::getSaveFileName(eltern, QStringLiteral("Export PDF…"), vorschlag,
                                                QStringLiteral("PDF (*.pdf)"));
    if (!pfad.isEmpty() && QFileInfo(pfad).suffix().isEmpty())
        pfad += QStringLiteral(".pdf");
    return pfad;
}

bool Liste_Drucken(QPrinter &drucker, const Liste_Kopf &kopf, const QStringList &kopfZeilen, const QStringList &zeilen,
                   int kopien)
{
    const std::vector<Druck_Seite> seiten = Liste_Seiten(kopf, kopfZeilen, zeilen);
    const QPageLayout::Orientation lage = drucker.pageLayout().orientation();
    Druckauftrag auftrag(drucker);
    for (int k = 0; k < std::max(1, kopien); ++k)
        auftrag.Textseiten(seiten, lage, plant.Druck_Prozent);
    return auftrag.seiten() > 0;
}

namespace {

/// Sets up the printer for a print button; false when cancelled.
bool druckerWaehlen(QPrinter &drucker, QWidget *fenster, bool pdf, const QString &vorschlag, int &kopien)
{
    kopien = 1;
    if (!pdf)
        return Druckdialog(drucker, fenster, kopien);
    const QString datei = PDF_Datei_Fragen(fenster, vorschlag);
    if (datei.isEmpty())
        return false;
    PDF_Drucker(drucker, datei);
    drucker.setPageOrientation(QPageLayout::Landscape);
    return true;
}

} // namespace

void Fenster_Ausgeben(QWidget *fenster, bool pdf, const QString &vorschlag, bool mitInfo)
{
    QPrinter drucker(QPrinter::HighResolution);
    int kopien = 1;
    if (druckerWaehlen(drucker, fenster, pdf, vorschlag, kopien))
        Fenster_Drucken(drucker, fenster, kopien, mitInfo);
}

void Liste_Ausgeben(QWidget *fenster, bool pdf, const QString &vorschlag, const Liste_Kopf &kopf,
                    const QStringList &kopfZeilen, const QStringList &zeilen)
{
    QPrinter drucker(QPrinter::HighResolution);
    int kopien = 1;
    if (druckerWaehlen(drucker, fenster, pdf, vorschlag, kopien))
        Liste_Drucken(drucker, kopf, kopfZeilen, zeilen, kopien);
}

bool Kurve_PDF(const QString &ziel)
{
    QPrinter drucker(QPrinter::HighResolution);
    PDF_Drucker(drucker, ziel);
    drucker.setPageOrientation(QPageLayout::Landscape);
    // The window as the operator sees it after loading, never on a screen.
    auto *fenster = new KM_Kurve;
    fenster->setAttribute(Qt::WA_DontShowOnScreen);
    fenster->setAttribute(Qt::WA_DeleteOnClose, false);
    fenster->Laden();
    fenster->resize(1100, 640);
    fenster->show();
    QApplication::processEvents();
    const bool ok = Fenster_Drucken(drucker, fenster, 1, true);
    delete fenster;
    return ok;
}

} // namespace kal
