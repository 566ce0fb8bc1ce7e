#pragma once
// KM_Menue, the live page: one row per furnace (button, state, segment, target,
// set, actual and end), the detail of the selected furnace, and the error list
// of the main cycle (LogList). It paints the rows that the live-page logic
// computes and hands its clicks back to it.

#include "curves/curve_page.h"

#include <QString>
#include <QTimer>
#include <QWidget>
#include <array>

class QLabel;
class QListWidget;
class QPushButton;
class QGroupBox;

namespace kal {

class KM_Menue : public QWidget {
    Q_OBJECT
public:
    explicit KM_Menue(QWidget *parent = nullptr);
    ~KM_Menue() override;

    /// Captions in the current language.
    void setCaptions();
    /// Paints the rows from the last computed page.
    void showModal();

    /// Reads the element list of the selected furnace anew (`RX_List`).
    void showElements();
    /// The source list of the USB import and its switch, shown while the
    /// import menu entry is on or the import runs.
    void showUsb();

    QListWidget *LogList() const { return m_logList; }
    QListWidget *RX_List() const { return m_rxList; }
    QListWidget *Quell_Liste() const { return m_quellListe; }
    QPushButton *usbButton() const { return m_usbTaste; }
    QPushButton *RX_Export() const { return m_rxExport; }
    QPushButton *curveButton() const { return m_kurve; }
    QPushButton *logBookButton() const { return m_logdaten; }
    /// Adds a line of the error list, selected.
    void showLogLine(const QString &line);

    /// `KurveInit`: the live curve's legend and colours for the furnace on view.
    void KurveInit();
    /// `Kurve_Online`: repaints the live curve of the furnace on view.
    void Kurve_Online();
    class CurveWidget *livePlot() const { return m_liveBild; }
    QPushButton *stromTaste() const { return m_strom; }

protected:
    void keyPressEvent(QKeyEvent *e) override;

private:
    void furnaceClicked(int n);
    void showDetail();

    struct FurnaceRow {
        QPushButton *OfenSelect = nullptr;
        QLabel *Status = nullptr;
        QLabel *Befehl = nullptr;
        QLabel *Soll_Bef = nullptr;
        QLabel *Sollwert = nullptr;
        QLabel *Istwert = nullptr;
        QLabel *Stellwert = nullptr;
    };
    std::array<FurnaceRow, 8> m_reihen;
    std::array<QLabel *, 7> m_kopf{};
    QGroupBox *m_detail = nullptr;
    QLabel *m_detailText = nullptr;
    QPushButton *m_meldungen = nullptr;
    QGroupBox *m_elemente = nullptr;
    QListWidget *m_rxList = nullptr;
    QPushButton *m_rxExport = nullptr;
    int m_rxOfen = 0;                   ///< furnace number of the element list shown
    QGroupBox *m_usb = nullptr;
    QListWidget *m_quellListe = nullptr;
    QLabel *m_usbText = nullptr;
    QPushButton *m_usbTaste = nullptr;
    QPushButton *m_kurve = nullptr;     ///< the running batch of the selected furnace as curves
    QPushButton *m_logdaten = nullptr;  ///< its records as the log data page
    QListWidget *m_logList = nullptr;
    CurveWidget *m_liveBild = nullptr;   ///< the online curve of the furnace on view
    QLabel *m_liveLegende = nullptr;
    QLabel *m_label2 = nullptr;         ///< time of the furnace's last log record
    QPushButton *m_strom = nullptr;     ///< its element currents
    PlotPage m_liveSeite;           ///< the ring in painting order
    int m_liveOfen = 0;                 ///< furnace number the curve was laid out for
    QTimer m_timer1;
};

} // namespace kal
