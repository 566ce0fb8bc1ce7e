#include "views/KM_RegPar.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "operation/controller_parameters.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>

namespace kal {

namespace {

constexpr int REFRESH_MS = 250;
/// Rows of the four parameters and of the live values.
constexpr int PARAMETER_ZEILE[4] = {text::PROPORTIONAL, text::INTEGRAL_TIME, text::DERIVATIVE_TIME,
                                    text::SAMPLING_TIME};
constexpr int LIVE_ZEILE[3] = {text::SET_VALUE, text::ACTUAL_VALUE, text::OUTPUT};
const QColor LINIE[3] = {QColor(0, 0, 200), QColor(200, 0, 0), QColor(0, 140, 0)};

QLabel *valueLabel(QWidget *parent)
{
    auto *l = new QLabel(parent);
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    l->setMinimumWidth(90);
    return l;
}

} // namespace

RegParPlot::RegParPlot(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(360, 160);
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void RegParPlot::paintEvent(QPaintEvent *)
{
    QPainter g(this);
    g.setRenderHint(QPainter::Antialiasing);
    const auto &verlauf = RegPar.Verlauf;
    const QFontMetrics fm(font());
    const int links = fm.horizontalAdvance(QStringLiteral("000000")) + 8;
    const QRect flaeche = rect().adjusted(links, 8, -8, -8);

    // Scal_Y: from 0 to the largest value, rounded up to a step of the scale.
    int hoch = 100;
    for (const auto &p : verlauf)
        for (int k = 0; k < 3; ++k)
            hoch = std::max<int>(hoch, p[size_t(k)]);
    const int schritt = hoch <= 1000 ? 100 : hoch <= 5000 ? 500 : 2000;
    const int Scal_Y = (hoch + schritt - 1) / schritt * schritt;
    auto y = [&](double v) { return flaeche.bottom() - v * flaeche.height() / Scal_Y; };

    g.setPen(QColor(220, 220, 220));
    for (int v = 0; v <= Scal_Y; v += Scal_Y / 5) {
        g.drawLine(QPointF(flaeche.left(), y(v)), QPointF(flaeche.right(), y(v)));
        g.setPen(palette().color(QPalette::WindowText));
        g.drawText(QRectF(0, y(v) - fm.height() / 2.0, links - 4, fm.height()), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(v));
        g.setPen(QColor(220, 220, 220));
    }
    g.setPen(palette().color(QPalette::WindowText));
    g.drawRect(flaeche);
    if (verlauf.size() < 2)
        return;
    const double dx = double(flaeche.width()) / (REGPAR_VERLAUF - 1);
    for (int k = 0; k < 3; ++k) {
        QPolygonF linie;
        for (int i = 0; i < verlauf.size(); ++i)
            linie << QPointF(flaeche.left() + i * dx, y(verlauf[i][size_t(k)]));
        g.setPen(QPen(LINIE[k], 1.5));
        g.drawPolyline(linie);
    }
}

KM_RegPar::KM_RegPar(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_RegPar"));
    auto *haupt = new QVBoxLayout(this);

    auto *wahl = new QHBoxLayout;
    m_ofenLabel = new QLabel(this);
    m_oefen = new QComboBox(this);
    m_oefen->setMinimumWidth(220);
    m_kreise = new QComboBox(this);
    m_kreise->setMinimumWidth(220);
    wahl->addWidget(m_ofenLabel);
    wahl->addWidget(m_oefen);
    wahl->addSpacing(12);
    wahl->addWidget(m_kreise);
    wahl->addStretch(1);
    haupt->addLayout(wahl);

    auto *mitte = new QHBoxLayout;
    auto *parameter = new QGridLayout;
    for (int i = 0; i < 4; ++i) {
        m_namen[size_t(i)] = new QLabel(this);
        m_eingabe[size_t(i)] = new QLineEdit(this);
        m_eingabe[size_t(i)]->setAlignment(Qt::AlignRight);
        m_eingabe[size_t(i)]->setMaximumWidth(110);
        m_ausgabe[size_t(i)] = valueLabel(this);
        parameter->addWidget(m_namen[size_t(i)], i, 0);
        parameter->addWidget(m_eingabe[size_t(i)], i, 1);
        parameter->addWidget(m_ausgabe[size_t(i)], i, 2);
        QLineEdit *feld = m_eingabe[size_t(i)];
        connect(feld, &QLineEdit::returnPressed, this, [this, i, feld] {
            inputKey(i, 13, feld->text());
            refresh();
        });
        connect(feld, &QLineEdit::editingFinished, this, [i, feld] { inputLeft(i, feld->text()); });
    }
    mitte->addLayout(parameter);
    mitte->addSpacing(24);
    auto *live = new QGridLayout;
    for (int k = 0; k < 4; ++k) {
        m_liveNamen[size_t(k)] = new QLabel(this);
        m_live[size_t(k)] = valueLabel(this);
        live->addWidget(m_liveNamen[size_t(k)], k, 0);
        live->addWidget(m_live[size_t(k)], k, 1);
    }
    mitte->addLayout(live);
    mitte->addStretch(1);
    haupt->addLayout(mitte);

    m_bild = new RegParPlot(this);
    haupt->addWidget(m_bild, 1);

    connect(m_oefen, &QComboBox::activated, this, [this](int index) {
        setRegParFurnace(m_oefen->itemData(index).toInt());
        refresh();
    });
    connect(m_kreise, &QComboBox::activated, this, [this](int index) {
        Regler_Umwahl(index);
        refresh();
    });
    setTabOrder(m_oefen, m_kreise);
    setTabOrder(m_kreise, m_eingabe[0]);
    for (int i = 0; i < 3; ++i)
        setTabOrder(m_eingabe[size_t(i)], m_eingabe[size_t(i + 1)]);

    m_timer.setInterval(REFRESH_MS);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (isVisible())
            refresh();
    });
    m_timer.start();
    setCaptions();
    refresh();
}

void KM_RegPar::setCaptions()
{
    m_ofenLabel->setText(Text_Id(text::FURNACE).trimmed());
    for (int i = 0; i < 4; ++i)
        m_namen[size_t(i)]->setText(Text_Id(PARAMETER_ZEILE[i]).trimmed());
    for (int k = 0; k < 3; ++k)
        m_liveNamen[size_t(k)]->setText(Text_Id(LIVE_ZEILE[k]).trimmed());
    for (int k = 0; k < 3; ++k) {
        QPalette p = m_liveNamen[size_t(k)]->palette();
        p.setColor(QPalette::WindowText, LINIE[k]);
        m_liveNamen[size_t(k)]->setPalette(p);
    }
    showLists();
    setWindowTitle(regParTitle());
}

void KM_RegPar::showLists()
{
    const QSignalBlocker a(m_oefen), b(m_kreise);
    m_oefen->clear();
    for (int nr : regParFurnaces()) {
        const QString name = plant.Ofen_Name[nr - 1].trimmed();
        m_oefen->addItem(QStringLiteral("%1  %2").arg(nr).arg(name), nr);
    }
    m_oefen->setCurrentIndex(m_oefen->findData(int(RegPar.Reg_Ofen)));
    m_kreise->clear();
    m_kreise->addItems(RegPar.MesswertWahl);
    m_kreise->setCurrentIndex(RegPar.Wahl < m_kreise->count() ? RegPar.Wahl : -1);
}

void KM_RegPar::refresh()
{
    const int ofen = RegPar.Reg_Ofen;
    const QStringList kreise = RegPar.MesswertWahl;
    const QList<int> oefen = regParFurnaces();
    Ofen_Wahl();
    QList<int> gezeigt;
    for (int i = 0; i < m_oefen->count(); ++i)
        gezeigt << m_oefen->itemData(i).toInt();
    if (ofen != RegPar.Reg_Ofen || kreise != RegPar.MesswertWahl || oefen != gezeigt ||
        m_oefen->currentData().toInt() != RegPar.Reg_Ofen || m_kreise->currentIndex() != RegPar.Wahl)
        showLists();
    setWindowTitle(regParTitle());

    const ControllerValues r = Reglerwerte_akt();
    for (int i = 0; i < 4; ++i) {
        if (r.eingabe_neu)
            m_eingabe[size_t(i)]->setText(r.Eingabe[size_t(i)]);
        m_ausgabe[size_t(i)]->setText(r.Ausgabe[size_t(i)]);
        m_eingabe[size_t(i)]->setEnabled(RegPar.Reg_Ofen != 0);
    }
    for (int k = 0; k < 4; ++k) {
        QString t = r.Live[size_t(k)];
        if (!t.isEmpty() && k < 2 && !r.Einheit.isEmpty())
            t += QLatin1Char(' ') + r.Einheit;
        else if (!t.isEmpty() && k == 2)
            t += QStringLiteral(" %");
        m_live[size_t(k)]->setText(t);
    }
    const int extra = RegPar.Reg_Adr[8];
    m_liveNamen[3]->setText(extra > 0 ? QStringLiteral("W %1").arg(extra) : QString());
    m_live[3]->setVisible(extra > 0);
    m_bild->update();
}

} // namespace kal
