#include "support/scripted_dialogs.h"

namespace kal::test {

int ScriptedDialogs::next()
{
    if (answers.empty())
        return defaultAnswer;
    const int a = answers.front();
    answers.pop_front();
    return a;
}

void ScriptedDialogs::message(const QString &text, const QString &title)
{
    shown.push_back({QStringLiteral("message"), text, title});
}

bool ScriptedDialogs::question(const QString &text, const QString &title)
{
    shown.push_back({QStringLiteral("question"), text, title});
    return next() != 0;
}

int ScriptedDialogs::choice(const QString &text, const QString &title, const QStringList &)
{
    shown.push_back({QStringLiteral("choice"), text, title});
    return next();
}

} // namespace kal::test
