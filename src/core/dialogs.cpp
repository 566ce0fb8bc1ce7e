#include "core/dialogs.h"

#include <cstdio>
#include <cstdlib>

namespace kal {

namespace {

/// Without forms: the text goes to standard error, questions get their
/// default (No, first button), so a station started without a display never
/// waits for an answer nobody can give.
class HeadlessDialogs : public Dialogs {
public:
    void message(const QString &text, const QString &title) override
    {
        std::fprintf(stderr, "kalmeron: %s%s%s\n", qPrintable(title), title.isEmpty() ? "" : ": ",
                     qPrintable(QString(text).replace(QLatin1Char('\n'), QLatin1String(" / "))));
    }
    bool question(const QString &text, const QString &title) override
    {
        message(text + QLatin1String(" [No]"), title);
        return false;
    }
    int choice(const QString &text, const QString &title, const QStringList &buttons) override
    {
        message(text + QLatin1String(" [") + buttons.value(0) + QLatin1String("]"), title);
        return 0;
    }
};

HeadlessDialogs headless;
Dialogs *current = &headless;

} // namespace

Dialogs &dialogs()
{
    return *current;
}

void setDialogs(Dialogs *d)
{
    current = d ? d : &headless;
}

void abortStation(const QString &text)
{
    dialogs().message(text);
    std::fflush(stderr);
    std::_Exit(1);
}

} // namespace kal
