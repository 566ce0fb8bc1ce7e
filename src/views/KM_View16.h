#pragma once
// KM_View16, the 16-channel view: the heating element currents of the batch
// page in the curve window, up to 18 curves on one scale, with the page's
// time marks, a cursor that reads every curve, paging and zoom through the
// curve window, CSV export, the value list KM_List16, printing and PDF. It
// opens modally above the curve window.

#include <QDialog>
#include <array>

class QLabel;
class QListWidget;
class QPushButton;

namespace kal {

class View16Plot;

class KM_View16 : public QDialog {
    Q_OBJECT
public:
    explicit KM_View16(QWidget *parent = nullptr);

    /// Takes the page of the curve window (`Tast_Strom`) and shows it.
    void onOpen();
    void setCaptions();
    QPushButton *taste(int i) const { return m_taste[size_t(i)]; }
    View16Plot *plotWidget() const { return m_bild; }

Q_SIGNALS:
    /// The curve window's page changed under the view.
    void seiteGeaendert();

private:
    void showBatch();
    void keyClicked(int i);
    void drucken(bool pdf);

    QLabel *m_titel = nullptr;
    QLabel *m_text = nullptr;
    View16Plot *m_bild = nullptr;
    std::array<QPushButton *, 8> m_taste{};
    QPushButton *m_drucken = nullptr, *m_pdf = nullptr;
};

/// The plot of the view (`picture1`).
class View16Plot : public QWidget {
    Q_OBJECT
public:
    explicit View16Plot(QWidget *parent = nullptr);
    QSize minimumSizeHint() const override { return {640, 300}; }
    QRect plotRect() const;
    /// The cursor at x pixels from the plot's left; negative: none.
    void setCursor(double x);

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *e) override;

private:
    double m_cursor = -1;
};

/// KM_List16, the value list of the view: a head line and one row a point.
class KM_List16 : public QDialog {
    Q_OBJECT
public:
    explicit KM_List16(QWidget *parent = nullptr);
    void onOpen();

protected:
    void done(int r) override;

private:
    void drucken(bool pdf);
    QListWidget *m_kopf = nullptr;
    QListWidget *m_liste = nullptr;
};

} // namespace kal
