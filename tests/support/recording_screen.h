#pragma once
// A screen that keeps what the logic told it: the texts of the status panels,
// the menu switches, the error list lines and the forms' refreshes.

#include "core/screen.h"

#include <QList>
#include <QMap>
#include <QPair>
#include <QStringList>

namespace kal::test {

class RecordingScreen : public Screen {
public:
    QMap<int, QString> panel;          ///< panel index -> last text
    QList<QPair<int, QString>> panels; ///< every panel text, in order
    QList<bool> regler;                ///< every switch of mnuRegler
    QList<QPair<int, bool>> formen;    ///< every switch of a mnuform entry
    QStringList logList;               ///< LogList lines shown
    QList<bool> alarme;                ///< every redraw of the message form (list or not)
    int menue = 0;                     ///< showings of the live page
    int sprache = 0;                   ///< language changes
    int elemente = 0;                  ///< refreshes of the element list
    int liveKurve = 0;                 ///< repaints of the live curve

    void Status_Panel(int p, const QString &text) override
    {
        panel[p] = text;
        panels.append({p, text});
    }
    void mnuRegler(bool on) override { regler.append(on); }
    void mnuform(int i, bool on) override { formen.append({i, on}); }
    void showMenu() override { ++menue; }
    void languageChanged() override { ++sprache; }
    void showLogLine(const QString &line) override { logList.append(line); }
    void drawMessages(bool liste) override { alarme.append(liste); }
    void showElements() override { ++elemente; }
    void Kurve_Online() override { ++liveKurve; }
};

} // namespace kal::test
