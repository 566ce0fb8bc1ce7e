#include "views/qt_dialogs.h"

#include <QMessageBox>
#include <QPushButton>

namespace kal {

void QtDialogs::message(const QString &text, const QString &title)
{
    QMessageBox box(QMessageBox::NoIcon, title, text, QMessageBox::Ok, m_parent);
    box.exec();
}

bool QtDialogs::question(const QString &text, const QString &title)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, m_parent);
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

int QtDialogs::choice(const QString &text, const QString &title, const QStringList &buttons)
{
    QMessageBox box(QMessageBox::Question, title, text, QMessageBox::NoButton, m_parent);
    QList<QAbstractButton *> made;
    for (const QString &b : buttons)
        made.append(box.addButton(b, QMessageBox::ActionRole));
    box.exec();
    const int i = int(made.indexOf(box.clickedButton()));
    return i < 0 ? 0 : i;
}

} // namespace kal
