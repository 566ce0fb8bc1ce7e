#include "views/KM_Schritte.h"

#include "config/text_ids.h"
#include "core/dates.h"
#include "core/dialogs.h"
#include "programs/program_editor.h"
#include "views/KM_COUNTER.h"
#include "views/form_keys.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace kal {

namespace {

enum Column : int {
    S_NR, S_BEFEHL, S_SOLL, S_SOLL_EINH, S_GRAD, S_GRAD_EINH, S_MAX, S_MAX_EINH, S_OUT, // 8..11
    S_ZULUFT = S_OUT + 4, S_ANALOG,
};

QLineEdit *numberEdit(QWidget *p, int breite)
{
    auto *e = new QLineEdit(p);
    e->setAlignment(Qt::AlignRight);
    e->setFixedWidth(breite);
    return e;
}

QLabel *headLabel(QWidget *p)
{
    auto *l = new QLabel(p);
    QFont f = l->font();
    f.setBold(true);
    l->setFont(f);
    return l;
}

} // namespace

KM_Schritte::KM_Schritte(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("KM_Schritte"));
    auto *haupt = new QVBoxLayout(this);

    auto *oben = new QHBoxLayout;
    m_text1 = new QLineEdit(this);
    m_text1->setMinimumWidth(300);
    m_text1->setFont(QFont(QStringLiteral("DejaVu Sans Mono")));
    connect(m_text1, &QLineEdit::textEdited, this, [this] {
        // A new name is a change to be saved, also after a paste.
        prog.Prog_Aus_Puffer = 0;
        prog.Prog_Geaendert = TRUE16;
        Loadtaste();
    });
    m_label1 = new QLabel(this);
    oben->addWidget(m_text1, 1);
    oben->addSpacing(20);
    oben->addWidget(m_label1);
    haupt->addLayout(oben);

    auto *raster = new QGridLayout;
    raster->setHorizontalSpacing(6);
    raster->setVerticalSpacing(3);
    const int kopfSpalten[9] = {S_NR, S_BEFEHL, S_SOLL, S_SOLL_EINH, S_GRAD, S_GRAD_EINH, S_MAX, S_MAX_EINH, S_ZULUFT};
    for (int c = 0; c < 9; ++c) {
        m_kopf[size_t(c)] = headLabel(this);
        raster->addWidget(m_kopf[size_t(c)], 0, kopfSpalten[c]);
    }
    m_zuluftKopf = m_kopf[8];
    m_analogKopf = headLabel(this);
    raster->addWidget(m_analogKopf, 0, S_ANALOG);
    for (int b = 0; b < 4; ++b) {
        m_ausgangKopf[size_t(b)] = headLabel(this);
        m_ausgangKopf[size_t(b)]->setAlignment(Qt::AlignCenter);
        raster->addWidget(m_ausgangKopf[size_t(b)], 0, S_OUT + b);
    }

    for (int row = 0; row < EDITOR_ZEILEN; ++row) {
        SegmentRow &r = m_reihe[size_t(row)];
        r.Label3 = new QLabel(this);
        r.Label3->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        r.Label3->setMinimumWidth(28);
        r.Combo2 = new QComboBox(this);
        r.Combo2->setMinimumWidth(130);
        connect(r.Combo2, &QComboBox::activated, this, [this, row](int i) {
            if (m_zeichnet)
                return;
            chooseCommand(prog.Erste_Zeile + row, m_reihe[size_t(row)].Combo2->itemData(i).toInt());
            Segment(row);
            Loadtaste();
            Ausgabe_AKT();
        });
        r.Sollwert = numberEdit(this, 70);
        r.Soll_Einh = new QLabel(this);
        r.Soll_Einh->setMinimumWidth(50);
        r.Gradient = numberEdit(this, 70);
        r.Grad_Einheit = new QLabel(this);
        r.Grad_Einheit->setMinimumWidth(60);
        r.MaxOUT = numberEdit(this, 50);
        r.MaxEinheit = new QLabel(QStringLiteral("%"), this);
        r.Zuluft = numberEdit(this, 50);
        r.Analog2 = numberEdit(this, 60);
        connect(r.Sollwert, &QLineEdit::editingFinished, this, [this, row] { fieldLeft(row, SollwertFormat, m_reihe[size_t(row)].Sollwert); });
        connect(r.Gradient, &QLineEdit::editingFinished, this, [this, row] { fieldLeft(row, GradientFormat, m_reihe[size_t(row)].Gradient); });
        connect(r.MaxOUT, &QLineEdit::editingFinished, this, [this, row] { fieldLeft(row, MaxOutFormat, m_reihe[size_t(row)].MaxOUT); });
        connect(r.Zuluft, &QLineEdit::editingFinished, this, [this, row] { fieldLeft(row, ZuluftFormat, m_reihe[size_t(row)].Zuluft); });
        connect(r.Analog2, &QLineEdit::editingFinished, this, [this, row] { fieldLeft(row, AnalogFormat, m_reihe[size_t(row)].Analog2); });
        raster->addWidget(r.Label3, row + 1, S_NR);
        raster->addWidget(r.Combo2, row + 1, S_BEFEHL);
        raster->addWidget(r.Sollwert, row + 1, S_SOLL);
        raster->addWidget(r.Soll_Einh, row + 1, S_SOLL_EINH);
        raster->addWidget(r.Gradient, row + 1, S_GRAD);
        raster->addWidget(r.Grad_Einheit, row + 1, S_GRAD_EINH);
        raster->addWidget(r.MaxOUT, row + 1, S_MAX);
        raster->addWidget(r.MaxEinheit, row + 1, S_MAX_EINH);
        for (int b = 0; b < 4; ++b) {
            auto *o = new QPushButton(this);
            o->setFixedWidth(60);
            connect(o, &QPushButton::clicked, this, [this, row, b] {
                takeOpenField();
                toggleOutput(prog.Erste_Zeile + row, b);
                Loadtaste();
                Ausgabe_AKT();
            });
            r.OUTPUT[size_t(b)] = o;
            raster->addWidget(o, row + 1, S_OUT + b);
        }
        raster->addWidget(r.Zuluft, row + 1, S_ZULUFT);
        raster->addWidget(r.Analog2, row + 1, S_ANALOG);
    }
    raster->setColumnStretch(S_ANALOG + 1, 1);
    haupt->addLayout(raster);

    m_scroll = new QScrollBar(Qt::Horizontal, this);
    m_scroll->setRange(0, PROG_SEGMENTE - EDITOR_ZEILEN);
    m_scroll->setPageStep(EDITOR_ZEILEN);
    connect(m_scroll, &QScrollBar::valueChanged, this, [this](int v) {
        if (m_zeichnet)
            return;
        takeOpenField();
        prog.Erste_Zeile = v;
        Ausgabe_AKT();
    });
    haupt->addWidget(m_scroll);

    auto *fuss = new QHBoxLayout;
    m_kopieren = new QPushButton(this);
    connect(m_kopieren, &QPushButton::clicked, this, [this] {
        takeOpenField();
        ProgCopy_aus_PC();
        m_einfuegen->setEnabled(true);
    });
    m_einfuegen = new QPushButton(this);
    connect(m_einfuegen, &QPushButton::clicked, this, [this] {
        // Pasted here it is an edit of this slot: it asks to be saved.
        Programm_Einfuegen();
        prog.Prog.Prog_Name = cleanName(prog.Prog.Prog_Name, prog.Prog_Name_Len);
        prog.Prog_Aus_Puffer = 0;
        prog.Prog_Geaendert = TRUE16;
        m_text1->setText(prog.Prog.Prog_Name);
        showDate();
        Loadtaste();
        Ausgabe_AKT();
    });
    m_fuss = new QLabel(this);
    QFont ff = m_fuss->font();
    ff.setBold(true);
    m_fuss->setFont(ff);
    fuss->addWidget(m_kopieren);
    fuss->addWidget(m_einfuegen);
    fuss->addStretch(1);
    fuss->addWidget(m_fuss);
    haupt->addLayout(fuss);

    m_taste = keyRow(this, haupt, [this](int i) { keyPressed(i); });
    setPageOnFocus(this, 1); // the page in front for printing while the editor has the focus
    m_timer1.setInterval(1000);
    connect(&m_timer1, &QTimer::timeout, this, [this] { Loadtaste(); });
}

bool KM_Schritte::onOpen(int ofenNr, int p)
{
    if (!openEditor(ofenNr, p))
        return false;
    m_label = readLabels(prog.Prog_Ofen);
    m_text1->setMaxLength(prog.Prog_Name_Len);
    m_text1->setText(prog.Prog.Prog_Name);
    m_zeichnet = true;
    m_scroll->setValue(0);
    m_zeichnet = false;
    setWindowTitle(editorTitle() + QStringLiteral(" — ") + Text_Id(text::PROGRAM) + QStringLiteral(" Nr.") +
                   QString::number(prog.Prog_Nr));
    showDate();
    setCaptions();
    m_timer1.start();
    return true;
}

void KM_Schritte::setCaptions()
{
    const int ids[9] = {-1, text::COMMAND, text::SET_VALUE, -1, text::PRESET, -1, text::POWER, -1, text::AIR_FEED};
    for (int c = 0; c < 9; ++c)
        m_kopf[size_t(c)]->setText(ids[c] < 0 ? QString() : Text_Id(ids[c]).trimmed());
    m_kopf[0]->setText(QStringLiteral("Nr"));
    m_analogKopf->setText(QStringLiteral("Analog"));
    for (int b = 0; b < 4; ++b)
        m_ausgangKopf[size_t(b)]->setText(m_label.Text[size_t(b)]);
    m_kopieren->setText(Text_Id(text::COPY).trimmed());
    m_einfuegen->setText(Text_Id(text::PASTE).trimmed());
    m_taste[7]->setText(Text_Id(text::END_BUTTON).trimmed());
    Loadtaste();
    Ausgabe_AKT();
}

void KM_Schritte::showDate()
{
    m_label1->setText(Text_Id(text::DATE).trimmed() + QStringLiteral(": ") +
                      Datum_Text(prog.Prog.Datum, QStringLiteral("TTMMJJ")) + QStringLiteral("  ") +
                      Datum_Text(prog.Prog.Datum, QStringLiteral("HHMM")));
}

void KM_Schritte::Loadtaste()
{
    const std::array<QString, 7> t = kal::Loadtaste();
    for (int i = 0; i < 7; ++i) {
        m_taste[size_t(i)]->setText(t[size_t(i)]);
        m_taste[size_t(i)]->setEnabled(!t[size_t(i)].isEmpty());
    }
    m_einfuegen->setEnabled(prog.Puffer_Voll != 0);
}

void KM_Schritte::showColumns()
{
    bool max = false;
    for (const SegmentRow &r : m_reihe)
        max = max || !r.MaxOUT->isHidden();
    m_kopf[6]->setVisible(max);
    // Without the options the output and air feed columns are not shown.
    const bool aus = prog.Mit_Ausgang != 0, luft = prog.Mit_Zuluft != 0;
    for (QLabel *k : m_ausgangKopf)
        k->setVisible(aus);
    m_zuluftKopf->setVisible(luft);
    m_analogKopf->setVisible(luft);
}

void KM_Schritte::Segment(int row)
{
    SegmentRow &r = m_reihe[size_t(row)];
    const int k = prog.Erste_Zeile + row;
    const RowLayout a = segmentLayout(k);
    r.Soll_Einh->setText(a.Soll_Einh);
    r.Sollwert->setVisible(a.Sollwert != FieldState::Verborgen);
    r.Sollwert->setReadOnly(a.Sollwert == FieldState::Gesperrt);
    r.Sollwert->setToolTip(a.Soll_Hinweis);
    if (!a.Grad_Einheit_Bleibt)
        r.Grad_Einheit->setText(a.Grad_Einheit);
    r.Grad_Einheit->setVisible(a.Gradient);
    r.Gradient->setVisible(a.Gradient);
    r.Gradient->setToolTip(a.Grad_Hinweis);
    if (a.Gradient && r.Gradient->text().isEmpty())
        r.Gradient->setText(a.Gradient_Leer);
    r.MaxOUT->setVisible(a.MaxOUT);
    r.MaxOUT->setToolTip(a.Max_Hinweis);
    r.MaxEinheit->setVisible(a.MaxOUT);

    const int befehl = prog.Prog.Segment[size_t(k)].Befehl;
    const bool inUse = befehl >= BEF_RAMPE && befehl <= BEF_ZYKLUS;
    const size_t art = size_t(std::max(0, befehl - 1));
    for (int b = 0; b < 4; ++b)
        r.OUTPUT[size_t(b)]->setVisible(prog.Mit_Ausgang != 0 && inUse && m_label.Ausgang_Aus[art][size_t(b)] == 0);
    r.Zuluft->setVisible(prog.Mit_Zuluft != 0 && inUse && m_label.Luft_Aus[art][0] == 0);
    r.Analog2->setVisible(prog.Mit_Zuluft != 0 && inUse && m_label.Luft_Aus[art][1] == 0);
}

void KM_Schritte::Ausgabe_AKT()
{
    if (prog.Prog_Ofen < 1)
        return;
    m_zeichnet = true;
    fillSetpoints();
    const bool argon = outputIsArgon(m_label);
    for (int row = 0; row < EDITOR_ZEILEN; ++row) {
        SegmentRow &r = m_reihe[size_t(row)];
        const int k = prog.Erste_Zeile + row;
        const ProgramSegment &s = prog.Prog.Segment[size_t(k)];
        r.Label3->setText(QString::number(k + 1));
        r.Combo2->clear();
        for (const CommandEntry &e : commandList(row))
            r.Combo2->addItem(e.text, e.befehl);
        int i = r.Combo2->findData(int(s.Befehl));
        if (i < 0) { // a stored command the list does not offer is only shown
            r.Combo2->addItem(s.Befehl <= BEF_ZYKLUS ? plant.Befehl_Name[s.Befehl].trimmed() : QString::number(s.Befehl),
                              int(s.Befehl));
            i = r.Combo2->count() - 1;
        }
        r.Combo2->setCurrentIndex(i);
        const RowTexts t = segmentTexts(k);
        r.Sollwert->setText(t.Sollwert);
        r.Gradient->setText(t.Gradient);
        r.MaxOUT->setText(t.MaxOUT);
        r.Zuluft->setText(t.Zuluft);
        r.Analog2->setText(t.Analog2);
        for (int b = 0; b < 4; ++b)
            r.OUTPUT[size_t(b)]->setText(outputCaption(s.Ausgang & (1 << b), b == 3 && argon));
        for (QLineEdit *e : {r.Sollwert, r.Gradient, r.MaxOUT, r.Zuluft, r.Analog2})
            e->setModified(false);
        Segment(row);
    }
    showColumns();
    m_fuss->setText(Text_Id(text::DURATION).trimmed() + QStringLiteral(": ") +
                    durationText(programMinutes(prog.Prog), QStringLiteral("###0")));
    m_zeichnet = false;
}

void KM_Schritte::fieldLeft(int row, void (*format)(int, const QString &), QLineEdit *feld)
{
    if (m_zeichnet || !feld->isModified() || prog.Prog_Ofen < 1)
        return;
    feld->setModified(false);
    format(prog.Erste_Zeile + row, feld->text());
    prog.Prog_Aus_Puffer = 0; // an edit after a paste is a change to be saved
    Loadtaste();
    Ausgabe_AKT();
}

void KM_Schritte::takeOpenField()
{
    // A field still being typed in gives its text before a button acts.
    if (auto *e = qobject_cast<QLineEdit *>(QApplication::focusWidget()); e && isAncestorOf(e) && e->isModified())
        Q_EMIT e->editingFinished();
}

void KM_Schritte::keyPressed(int i)
{
    takeOpenField();
    if (i == 7) {
        close();
        return;
    }
    const int ofen = prog.Prog_Ofen - 1;
    const QString name = m_text1->text();
    switch (editorKey(i, m_taste[size_t(i)]->text(), name)) {
    case KeyEffect::Gesendet:
        KM_COUNTER::showModal(ofen, plant.Write_Len[ofen], name, this);
        break;
    case KeyEffect::Gesichert:
        m_text1->setText(prog.Prog.Prog_Name.trimmed());
        showDate();
        break;
    default:
        break;
    }
    Loadtaste();
    Ausgabe_AKT();
}

void KM_Schritte::keyPressEvent(QKeyEvent *e)
{
    if (e->key() >= Qt::Key_F1 && e->key() <= Qt::Key_F8) {
        const int i = e->key() - Qt::Key_F1;
        if (m_taste[size_t(i)]->isEnabled())
            keyPressed(i);
        return;
    }
    QWidget::keyPressEvent(e);
}

void KM_Schritte::closeEvent(QCloseEvent *e)
{
    takeOpenField();
    if (prog.Prog_Geaendert != 0) {
        const int antwort = dialogs().choice(
            closeQuestion(), QString(),
            {Text_Id(text::YES).trimmed(), Text_Id(text::NO).trimmed(), Text_Id(text::CANCEL).trimmed()});
        if (antwort == 2 || (antwort == 0 && !saveEditor(m_text1->text()))) {
            e->ignore();
            return;
        }
        prog.Prog_Geaendert = 0;
    }
    m_timer1.stop();
    e->accept();
    Q_EMIT closed();
}

} // namespace kal
