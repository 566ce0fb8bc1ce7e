#include "views/KM_Kurve.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "curves/curve_colours.h"
#include "curves/csv_export.h"
#include "curves/curve_store.h"
#include "curves/time_axis.h"
#include "operation/status_colours.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace kal {

namespace {

QColor channelColour(int c)
{
    return QColor::fromRgb(colourRgb(Kurve_Farbe(Kurve.Kurve_Ofen, c)));
}

} // namespace

KM_Kurve::KM_Kurve(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Kurve"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto *haupt = new QHBoxLayout(this);
    auto *links = new QVBoxLayout;
    haupt->addLayout(links, 1);

    auto *kopf = new QHBoxLayout;
    m_name = new QLabel(this);
    QFont fett = m_name->font();
    fett.setBold(true);
    fett.setPointSizeF(fett.pointSizeF() * 1.15);
    m_name->setFont(fett);
    m_charge = new QLabel(this);
    m_spanne = new QLabel(this);
    m_spanne->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (QLabel *l : {m_name, m_charge, m_spanne})
        l->setTextFormat(Qt::PlainText);
    kopf->addWidget(m_name);
    kopf->addSpacing(16);
    kopf->addWidget(m_charge);
    kopf->addStretch(1);
    kopf->addWidget(m_spanne);
    links->addLayout(kopf);

    m_legende = new QLabel(this);
    m_legende->setTextFormat(Qt::RichText);
    m_legende->setWordWrap(true);
    links->addWidget(m_legende);

    m_bild = new CurveWidget(this);
    links->addWidget(m_bild, 1);
    connect(m_bild, &CurveWidget::mouseAt, this, &KM_Kurve::mouseAt);

    auto *leiste = new QHBoxLayout;
    for (int i = 0; i < 8; ++i) {
        m_taste[size_t(i)] = new QPushButton(this);
        m_taste[size_t(i)]->setObjectName(QStringLiteral("Taste%1").arg(i));
        m_taste[size_t(i)]->setMinimumWidth(96);
        connect(m_taste[size_t(i)], &QPushButton::clicked, this, [this, i] { keyClicked(i); });
        leiste->addWidget(m_taste[size_t(i)]);
    }
    m_strom = new QPushButton(this);
    m_strom->setObjectName(QStringLiteral("Tast_Strom"));
    m_strom->hide();
    connect(m_strom, &QPushButton::clicked, this, [this] { Q_EMIT strom(); });
    leiste->addWidget(m_strom);
    links->addLayout(leiste);

    auto *rechts = new QVBoxLayout;
    m_bildLadung = new QLabel(this);
    m_bildLadung->setFixedWidth(300);
    m_bildLadung->setAlignment(Qt::AlignCenter);
    m_bildLadung->hide();
    rechts->addWidget(m_bildLadung);
    m_info = new QPlainTextEdit(this);
    m_info->setReadOnly(true);
    m_info->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_info->setFont(QFont(QStringLiteral("DejaVu Sans Mono"), std::max(7, font().pointSize() - 2)));
    // Wide enough for a segment line (62 characters) without scrolling.
    m_info->setFixedWidth(m_info->fontMetrics().horizontalAdvance(QString(63, QLatin1Char('0'))) + 24);
    rechts->addWidget(m_info, 1);
    haupt->addLayout(rechts);

    // Keys go to this invisible control, so that a key can't press a button
    // by accident; F1..F8 press the buttons 0..7.
    m_fokusPark = new QWidget(this);
    m_fokusPark->setObjectName(QStringLiteral("Fokus_Park"));
    m_fokusPark->setFocusPolicy(Qt::StrongFocus);
    m_fokusPark->setFixedSize(0, 0);

    m_neu.setSingleShot(true);
    m_neu.setInterval(200);
    connect(&m_neu, &QTimer::timeout, this, &KM_Kurve::showBatch);

    plant.Kurve_Online = TRUE16;
    setCaptions();
    resize(1100, 640);
}

KM_Kurve::~KM_Kurve()
{
    plant.Kurve_Online = 0;
    if (plant.Aktive_Seite == 2)
        plant.Aktive_Seite = 0;
}

void KM_Kurve::setCaptions()
{
    for (int i = 0; i < 8; ++i)
        m_taste[size_t(i)]->setText(curveKeyCaption(i));
    m_strom->setText(Text_Id(text::CURRENT_A).trimmed());
    showBatch();
}

void KM_Kurve::load()
{
    Charge_geladen();
    showBatch();
}

void KM_Kurve::refreshLive()
{
    if (!m_neu.isActive())
        m_neu.start();
}

void KM_Kurve::showBatch()
{
    setWindowTitle(Kurve.Titel);
    m_name->setText(Kurve.Label_Name.trimmed());
    m_charge->setText(Kurve.Label_Charge);
    m_spanne->setText(Text_Id(text::START).trimmed() + QStringLiteral(" ") + Kurve.Label_Erster + QStringLiteral("   ") +
                      Text_Id(text::END).trimmed() + QStringLiteral(" ") + Kurve.Label_Letzter + QStringLiteral("   ") +
                      Text_Id(text::DURATION).trimmed() + QStringLiteral(" ") + Kurve.Label_Dauer);
    QStringList legende;
    for (int c = 0; c < plant.Kanal_Zahl[0] && c < SEITEN_KANAELE; ++c)
        legende << QStringLiteral("<span style='color:%1'>&#9632; %2</span>")
                       .arg(channelColour(c).name(), plant.Kanal_Name(0, c).simplified().toHtmlEscaped());
    m_legende->setText(legende.join(QStringLiteral("&nbsp;&nbsp;&nbsp;")));

    for (int i = 0; i < 8; ++i)
        m_taste[size_t(i)]->setEnabled(Kurve.Taste_An[size_t(i)]);
    // The element currents of the batch, when it recorded any.
    m_strom->setVisible(Kurve.listen.Meldliste[4].size() > 0);

    QString info;
    if (!Kurve.Charge_Nummer.trimmed().isEmpty())
        info += Text_Id(text::PROGRAM).trimmed() + QStringLiteral(": ") + Kurve.Charge_Nummer.trimmed() + QLatin1Char('\n');
    const QString text = Kurve.Charge_Text;
    for (int z = 0; z < 4; ++z)
        if (!text.mid(z * 40, 40).trimmed().isEmpty())
            info += text.mid(z * 40, 40).trimmed() + QLatin1Char('\n');
    if (!info.isEmpty())
        info += QLatin1Char('\n');
    info += QString(Kurve.Info_Text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (m_info->toPlainText() != info)
        m_info->setPlainText(info);

    if (!Kurve.Bild_Datei.isEmpty()) {
        const QPixmap bild(Kurve.Bild_Datei);
        m_bildLadung->setPixmap(bild.scaled(m_bildLadung->width(), 200, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        m_bildLadung->setVisible(!bild.isNull());
    } else {
        m_bildLadung->hide();
    }
    KurveAct();
}

void KM_Kurve::KurveAct()
{
    CurvePaintParams p;
    p.seite = Kurve.zeitDa ? &Kurve.seite : nullptr;
    p.kanaele = plant.Kanal_Zahl[0];
    p.regeln = CurveRules{plant.Ofen_Typ[0], plant.Kurve_Option != 0};
    for (int c = 0; c < SEITEN_KANAELE; ++c)
        p.farben[size_t(c)] = channelColour(c);
    p.segmentText = Kurve.Segment_Text;
    p.marken = Kurve.Label_Marke;
    p.maus = MAUS_AUS(); // a new page removes the cursor
    m_bild->setParameter(p);
}

void KM_Kurve::keyClicked(int i)
{
    if (curvePageKey(i)) {
        KurveAct();
        for (int k = 0; k < 8; ++k)
            m_taste[size_t(k)]->setEnabled(Kurve.Taste_An[size_t(k)]);
        m_fokusPark->setFocus();
        return;
    }
    if (i == TASTE_LADEN)
        Q_EMIT loadRequested();
    else if (i == TASTE_CSV)
        CSV_EXPORT(false);
    else if (i == TASTE_LISTE)
        Q_EMIT liste();
    else if (i == TASTE_ENDE)
        Q_EMIT backToLivePage();
}

void KM_Kurve::mouseAt(int button, double x, double y, bool bewegung)
{
    if (bewegung && plant.List16_Offen != 0)
        return;
    CurvePaintParams p = m_bild->parameter();
    if (!p.seite)
        return;
    CursorFrame r{Kurve.Zeit_Marke[0], Kurve.Zeit_Raster, plant.Ofen_Typ[0]};
    p.maus = Mouse_Werte(button, x, y, m_bild->scale(), *p.seite, r);
    m_bild->setParameter(p);
    if (!hasFocus() && !m_fokusPark->hasFocus())
        m_fokusPark->setFocus();
}

void KM_Kurve::keyPressEvent(QKeyEvent *e)
{
    if (e->key() >= Qt::Key_F1 && e->key() <= Qt::Key_F8) {
        QPushButton *b = m_taste[size_t(e->key() - Qt::Key_F1)];
        if (b->isEnabled())
            b->click();
        return;
    }
    QWidget::keyPressEvent(e);
}

QString KM_Kurve::labelText(const QString &name) const
{
    if (name == QLatin1String("name"))
        return m_name->text();
    if (name == QLatin1String("charge"))
        return m_charge->text();
    if (name == QLatin1String("spanne"))
        return m_spanne->text();
    if (name == QLatin1String("info"))
        return m_info->toPlainText();
    return QString();
}

} // namespace kal
