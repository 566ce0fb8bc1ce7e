#include "views/KM_ProgView.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "programs/program_transfer.h"
#include "programs/program_view.h"
#include "views/form_keys.h"

#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kal {

namespace {
constexpr int REFRESH_MS = 1000;
constexpr int SPALTEN = 8; ///< Nr, three lines, four outputs
} // namespace

KM_ProgView::KM_ProgView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_ProgView"));
    auto *haupt = new QVBoxLayout(this);
    m_titel = new QLabel(this);
    QFont f = m_titel->font();
    f.setBold(true);
    f.setPointSizeF(f.pointSizeF() * 1.2);
    m_titel->setFont(f);
    m_name = new QLabel(this);
    m_name->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    haupt->addWidget(m_titel);
    haupt->addWidget(m_name);

    m_tabelle = new QTableWidget(0, SPALTEN, this);
    m_tabelle->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tabelle->setSelectionMode(QAbstractItemView::NoSelection);
    m_tabelle->verticalHeader()->hide();
    m_tabelle->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tabelle->setMinimumSize(760, 300);
    haupt->addWidget(m_tabelle, 1);

    auto *fuss = new QHBoxLayout;
    m_laenge = new QLabel(this);
    m_status = new QLabel(this);
    m_status->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    fuss->addWidget(m_laenge);
    fuss->addStretch(1);
    fuss->addWidget(m_status);
    haupt->addLayout(fuss);

    m_taste = keyRow(this, haupt, [this](int i) { keyPressed(i); });
    setPageOnFocus(this, 4);
    setFocusPolicy(Qt::StrongFocus);
    m_timer1.setInterval(REFRESH_MS);
    connect(&m_timer1, &QTimer::timeout, this, [this] { Seite_Act(); });
}

void KM_ProgView::onOpen()
{
    prog.Prog_Platz = 0;
    m_timer1.start();
    setCaptions();
}

void KM_ProgView::setCaptions()
{
    setWindowTitle(Text_Id(text::PROGRAM).trimmed() + QLatin1Char(' ') + Text_Id(text::CURRENT).trimmed());
    m_taste[6]->setText(Text_Id(text::COPY).trimmed());
    m_taste[7]->setText(Text_Id(text::END_BUTTON).trimmed());
    Seite_Act();
}

void KM_ProgView::Seite_Act()
{
    const int n = plant.Seite_Ofen;
    if (n != m_ofenNr) {
        m_ofenNr = n;
        if (n >= 1 && n <= OFEN_MAX)
            m_label = readLabels(n);
        prog.Prog_Platz = 0; // another furnace: its active program first
    }
    const std::array<QString, 6> plaetze = placeKeyCaptions(n);
    for (int i = 0; i < 6; ++i) {
        m_taste[size_t(i)]->setText(plaetze[size_t(i)]);
        m_taste[size_t(i)]->setEnabled(!plaetze[size_t(i)].isEmpty());
    }
    // The output columns carry the captions of the label file, and are shown
    // only for a furnace with outputs.
    m_tabelle->setHorizontalHeaderLabels({QStringLiteral("Nr"), QString(), QString(), QString(), m_label.Text[0],
                                          m_label.Text[1], m_label.Text[2], m_label.Text[3]});
    const bool ausgaenge = n >= 1 && n <= OFEN_MAX && (optionWord(n - 1) & OPT_AUSGANG);
    for (int c = 4; c < SPALTEN; ++c)
        m_tabelle->setColumnHidden(c, !ausgaenge);
    const ViewPage a = kal::Seite_Act(n, m_label);
    m_taste[6]->setEnabled(!a.leer);
    m_offset = a.offset;
    QString titel = a.titel;
    if (!a.leer)
        titel = QStringLiteral("[%1]  ").arg(n) + plant.Ofen_Name[n - 1].trimmed() + QStringLiteral("  —  ") + titel;
    m_titel->setText(titel);
    m_name->setText(a.name);
    m_laenge->setText(a.leer ? QString() : Text_Id(text::DURATION).trimmed() + QStringLiteral(": ") + a.laenge);
    m_status->setText(a.status);
    m_tabelle->setRowCount(int(a.segmente.size()) + (a.ende.isEmpty() ? 0 : 1));
    int r = 0;
    auto zelle = [this](int row, int col, const QString &t) {
        auto *it = new QTableWidgetItem(t);
        if (col >= 4)
            it->setTextAlignment(Qt::AlignCenter);
        m_tabelle->setItem(row, col, it);
    };
    for (const ViewSegment &s : a.segmente) {
        zelle(r, 0, QString::number(s.nr));
        for (int z = 0; z < 3; ++z)
            zelle(r, 1 + z, s.zeilen.value(z));
        for (int b = 0; b < 4; ++b)
            zelle(r, 4 + b, s.ausgang[size_t(b)]);
        ++r;
    }
    if (!a.ende.isEmpty()) {
        zelle(r, 0, QString::number(r + 1));
        zelle(r, 1, a.ende);
        for (int c = 2; c < SPALTEN; ++c)
            zelle(r, c, QString());
    }
}

void KM_ProgView::keyPressed(int i)
{
    const int n = plant.Seite_Ofen;
    if (n < 1 || n > OFEN_MAX)
        return;
    if (i >= 0 && i < 6 && !m_taste[size_t(i)]->text().isEmpty()) {
        requestPlace(n - 1, i + 1);
        Seite_Act();
    } else if (i == 6) {
        ProgCopy_aus_SPS(n - 1, m_offset);
    } else if (i == 7) {
        close();
    }
}

void KM_ProgView::keyPressEvent(QKeyEvent *e)
{
    if (e->key() >= Qt::Key_F1 && e->key() <= Qt::Key_F8) {
        keyPressed(e->key() - Qt::Key_F1);
        return;
    }
    QWidget::keyPressEvent(e);
}

void KM_ProgView::closeEvent(QCloseEvent *e)
{
    m_timer1.stop();
    e->accept();
    Q_EMIT closed();
}

} // namespace kal
