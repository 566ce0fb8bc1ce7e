#pragma once
// KM_ProgWahl, the program selection: the furnace (Combo1), the list of its
// stored programs (ProgList1), the number field (Text1), and the buttons okButton
// (open the step editor), delete, paste (open the editor to paste the copy
// buffer into the chosen number) and cancel.

#include <QWidget>

class QComboBox;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace kal {

class KM_ProgWahl : public QWidget {
    Q_OBJECT
public:
    explicit KM_ProgWahl(QWidget *parent = nullptr);

    /// Fills the furnace choice and the list anew (each time the form is shown).
    void load();
    void setCaptions();

    QComboBox *Combo1() const { return m_combo1; }
    QListWidget *ProgList1() const { return m_liste; }
    QLineEdit *Text1() const { return m_text1; }
    QPushButton *okButton() const { return m_ok; }
    QPushButton *deleteButton() const { return m_loeschen; }
    QPushButton *insertButton() const { return m_einfuegen; }

Q_SIGNALS:
    /// Open the editor on furnace number `ofenNr`, program `p`.
    void openProgram(int ofenNr, int p);
    void closed();

protected:
    void closeEvent(QCloseEvent *e) override;

private:
    void furnaceChosen();
    void okClicked();
    void deleteClicked();

    QComboBox *m_combo1 = nullptr;
    QListWidget *m_liste = nullptr;
    QLineEdit *m_text1 = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_loeschen = nullptr;
    QPushButton *m_einfuegen = nullptr;
    QPushButton *m_abbruch = nullptr;
};

} // namespace kal
