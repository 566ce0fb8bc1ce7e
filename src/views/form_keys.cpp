#include "views/form_keys.h"

#include "core/plant_state.h"

#include <QApplication>
#include <QGridLayout>
#include <QListWidget>
#include <QScrollBar>

namespace kal {

std::array<QPushButton *, 8> keyRow(QWidget *form, QBoxLayout *layout, const std::function<void(int)> &gedrueckt)
{
    std::array<QPushButton *, 8> tasten{};
    auto *reihe = new QGridLayout;
    for (int i = 0; i < 8; ++i) {
        auto *t = new QPushButton(form);
        t->setMinimumHeight(34);
        t->setMinimumWidth(110);
        QObject::connect(t, &QPushButton::clicked, form, [gedrueckt, i] { gedrueckt(i); });
        tasten[size_t(i)] = t;
        reihe->addWidget(t, 0, i);
    }
    layout->addLayout(reihe);
    return tasten;
}

QListWidget *listHeader(QWidget *form, QListWidget *liste, int zeilen)
{
    auto *kopf = new QListWidget(form);
    kopf->setFont(liste->font());
    kopf->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    kopf->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    kopf->setFixedHeight(zeilen * QFontMetrics(kopf->font()).lineSpacing() + 10);
    kopf->setFocusPolicy(Qt::NoFocus);
    kopf->setSelectionMode(QAbstractItemView::NoSelection);
    QObject::connect(liste->horizontalScrollBar(), &QScrollBar::valueChanged, kopf->horizontalScrollBar(),
                     &QScrollBar::setValue);
    return kopf;
}

void setPageOnFocus(QWidget *form, int seite)
{
    QObject::connect(qApp, &QApplication::focusChanged, form, [form, seite](QWidget *, QWidget *jetzt) {
        if (jetzt && (jetzt == form || form->isAncestorOf(jetzt)))
            plant.Aktive_Seite = static_cast<i16>(seite);
    });
}

} // namespace kal
