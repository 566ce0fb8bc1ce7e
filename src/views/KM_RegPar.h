#pragma once
// KM_RegPar, the controller parameter form: one control loop of one online
// furnace, its four PID values (typed and sent with Enter) and its live values
// with their plot `picture1`. It refreshes from its own timer.

#include <QTimer>
#include <QWidget>
#include <array>

class QComboBox;
class QLabel;
class QLineEdit;

namespace kal {

/// `picture1`: the live values of the loop, set value, actual value and
/// output, over the last refreshes.
class RegParPlot : public QWidget {
public:
    explicit RegParPlot(QWidget *parent = nullptr);
    QSize sizeHint() const override { return {520, 220}; }

protected:
    void paintEvent(QPaintEvent *e) override;
};

class KM_RegPar : public QWidget {
    Q_OBJECT
public:
    explicit KM_RegPar(QWidget *parent = nullptr);

    /// Captions in the current language.
    void setCaptions();
    /// One refresh: furnace choice, loop list, values, plot.
    void refresh();

    QComboBox *furnaceList() const { return m_oefen; }
    QComboBox *MesswertWahl() const { return m_kreise; }
    QLineEdit *Eingabe(int i) const { return m_eingabe[i]; }
    QLabel *Ausgabe(int i) const { return m_ausgabe[i]; }

private:
    void showLists();

    QComboBox *m_oefen = nullptr;
    QComboBox *m_kreise = nullptr;
    QLabel *m_ofenLabel = nullptr;
    std::array<QLabel *, 4> m_namen{};
    std::array<QLineEdit *, 4> m_eingabe{};
    std::array<QLabel *, 4> m_ausgabe{};
    std::array<QLabel *, 4> m_liveNamen{};
    std::array<QLabel *, 4> m_live{};
    RegParPlot *m_bild = nullptr;
    QTimer m_timer;
};

} // namespace kal
