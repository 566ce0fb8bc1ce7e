#pragma once
// KM_TempDatei, the batch browser: drive and folder at the left, the batch
// files of the folder in the middle, filter (furnaces, earliest date), sort
// order, the batch's text, the user folder button and OK/Cancel at the right.
// The logic is in recording/batch_browser; the form keeps widget state only.

#include <QWidget>
#include <array>

class QCheckBox;
class QComboBox;
class QFileSystemModel;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTreeView;

namespace kal {

class KM_TempDatei : public QWidget {
    Q_OBJECT
public:
    explicit KM_TempDatei(QWidget *parent = nullptr);

    /// The load of the form: saved folder, captions, the list.
    void load();
    /// `Liste_Aufbauen`: the list of the folder now shown.
    void Liste_Aufbauen();
    void setCaptions();

    QListWidget *List1() const { return m_list; }
    QPushButton *OKButton() const { return m_ok; }
    QPushButton *USER_LogButton() const { return m_user; }
    QCheckBox *OfenCheck(int i) const { return m_ofen[size_t(i)]; }
    QRadioButton *Sortierung(int i) const { return m_sort[size_t(i)]; }
    QLineEdit *Datum_IN() const { return m_datum; }
    QString Text1() const;
    /// Shows the folder `pfad` as if the user had chosen it.
    void chooseFolder(const QString &pfad);

Q_SIGNALS:
    /// OK or a double click: `Kurve_Datei` is to be shown in the curve window.
    void batchChosen();

private:
    void lineClicked();
    void okClicked();
    void furnaceClicked();
    void userClicked();
    void driveChosen(int index);
    void showFolder(const QString &pfad);

    QComboBox *m_drive = nullptr;       // Drive1
    QTreeView *m_dir = nullptr;         // Dir1
    QFileSystemModel *m_model = nullptr;
    QListWidget *m_list = nullptr;      // List1
    std::array<QCheckBox *, 8> m_ofen{};  // OfenCheck
    std::array<QRadioButton *, 2> m_sort{}; // Sortierung
    QLabel *m_label1 = nullptr;         // "Auswahl ab"
    QLabel *m_label2 = nullptr;         // "Sortierung"
    QLineEdit *m_datum = nullptr;       // Datum_IN
    QPlainTextEdit *m_text = nullptr;   // Text1
    QPushButton *m_ok = nullptr;
    QPushButton *m_cancel = nullptr;
    QPushButton *m_user = nullptr;
    int m_userZustand = 0;
    bool m_baut = false;                // Liste_Baut
};

} // namespace kal
