#pragma once
// KM_Alarme, the message form: the active messages of the ticked furnaces, or
// in configuration mode every message with its PLC configuration; the four
// configuration lamps per furnace; the buttons Taste(0..7) on F1..F8.

#include <QWidget>
#include <array>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace kal {

class KM_Alarme : public QWidget {
    Q_OBJECT
public:
    /// Opens in configuration mode when `konfig`.
    explicit KM_Alarme(bool konfig, QWidget *parent = nullptr);
    ~KM_Alarme() override;

    /// Captions in the current language.
    void setCaptions();
    QListWidget *List1() const { return m_list; }
    QPushButton *Taste(int i) const { return m_tasten[i]; }
    /// Redraws the lamps, and the list too when `liste`.
    void redraw(bool liste);

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void showLamps();
    void showList();
    void showKeys();
    void keyPressed(int i);

    std::array<QCheckBox *, 8> m_check{};
    std::array<std::array<QLabel *, 4>, 8> m_lampen{};
    QListWidget *m_list = nullptr;
    std::array<QPushButton *, 8> m_tasten{};
};

} // namespace kal
