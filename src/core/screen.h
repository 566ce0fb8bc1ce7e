#pragma once
// The screen interface: how the station's logic tells the main window and its
// forms that something they show has changed. The logic never calls a widget;
// the main window installs its implementation when it is made, tests install
// their own, and without either the headless default ignores every call, so
// the station runs without a display.

#include <QString>

namespace kal {

class Screen {
public:
    virtual ~Screen() = default;
    /// Text of status-bar panel `panel` (furnace index + 1).
    virtual void Status_Panel(int panel, const QString &text) { (void)panel, (void)text; }
    /// Switches the controller menu entry `mnuRegler` on or off.
    virtual void mnuRegler(bool on) { (void)on; }
    /// Switches entry i of the form menu `mnuform` on or off.
    virtual void mnuform(int i, bool on) { (void)i, (void)on; }
    /// Shows the live page `KM_Menue` (last step of the start-up).
    virtual void showMenu() {}
    /// Unloads the dialogs in the order of the shutdown, before the process ends.
    virtual void unloadForms() {}
    /// `Sprache` changed and the language tables are switched: re-caption the
    /// menus and redraw the open forms.
    virtual void languageChanged() {}
    /// A line was added to `LogList`: show it, selected.
    virtual void showLogLine(const QString &line) { (void)line; }
    /// The message form, when shown, redraws its lamps, and its list too when
    /// `liste`.
    virtual void drawMessages(bool liste) { (void)liste; }
    /// The live page's element list of the selected furnace is to be refreshed.
    virtual void showElements() {}
    /// The batch on view in the curve window grew (a live refresh): redraw it.
    virtual void curveChanged() {}
    /// `Kurve_Online`: the live ring took a sample; the furnace page repaints
    /// the curve of the furnace on view.
    virtual void Kurve_Online() {}
};

/// The screen in use (never null).
Screen &screen();
/// Installs an implementation; nullptr goes back to the headless default. The
/// caller keeps ownership.
void setScreen(Screen *s);

/// Adds a line to `LogList` (the error list of the live page) and shows it.
void LogList_Add(const QString &line);

} // namespace kal
