#pragma once
// The dialog interface of the station on QMessageBox, parented to the main window.

#include "core/dialogs.h"

class QWidget;

namespace kal {

class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget *parent) : m_parent(parent) {}
    void message(const QString &text, const QString &title = QString()) override;
    bool question(const QString &text, const QString &title = QString()) override;
    int choice(const QString &text, const QString &title, const QStringList &buttons) override;

private:
    QWidget *m_parent;
};

} // namespace kal
