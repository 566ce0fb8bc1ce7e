#pragma once
// Dialogs answered from a script; every text shown is kept.

#include "core/dialogs.h"

#include <deque>

namespace kal::test {

class ScriptedDialogs : public Dialogs {
public:
    struct Shown {
        QString kind; ///< "message", "question" or "choice"
        QString text;
        QString title;
    };
    std::deque<Shown> shown;
    std::deque<int> answers; ///< question: nonzero = Yes; choice: button index
    int defaultAnswer = 0;   ///< used when the script has run out

    void message(const QString &text, const QString &title = QString()) override;
    bool question(const QString &text, const QString &title = QString()) override;
    int choice(const QString &text, const QString &title, const QStringList &buttons) override;

private:
    int next();
};

} // namespace kal::test
