#pragma once
// The dialog interface: the only way logic shows a message or asks a question.
// The forms install a QMessageBox implementation at start-up; tests install
// scripted answers; without either, the headless default writes the text to
// standard error and gives the default answer, so the station can run unattended.

#include <QString>
#include <QStringList>

namespace kal {

class Dialogs {
public:
    virtual ~Dialogs() = default;
    /// A message box with one OK button. An empty title means no title.
    virtual void message(const QString &text, const QString &title = QString()) = 0;
    /// A question with the buttons Yes and No; true for Yes.
    virtual bool question(const QString &text, const QString &title = QString()) = 0;
    /// A question with the given buttons; returns the index of the one chosen.
    virtual int choice(const QString &text, const QString &title, const QStringList &buttons) = 0;
};

/// The dialogs in use (never null).
Dialogs &dialogs();
/// Installs an implementation; nullptr goes back to the headless default.
/// The caller keeps ownership.
void setDialogs(Dialogs *d);

/// Shows the text through the dialog interface and ends the process at once
/// (exit code 1). Used only for the two deliberate program ends of a corrupt
/// packed number (CVI, CVL).
[[noreturn]] void abortStation(const QString &text);

} // namespace kal
