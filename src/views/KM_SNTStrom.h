#pragma once
// KM_SNTStrom, the element current view of a furnace: one bar per heating
// element over a drawing of the furnace (a picture file when the plant has
// one, else a schematic drawn here), each with its value beside it, the
// scale at the left; refreshed by its own timer from the word image.

#include <QTimer>
#include <QWidget>

class QPushButton;

namespace kal {

class KM_SNTStrom : public QWidget {
    Q_OBJECT
public:
    explicit KM_SNTStrom(QWidget *parent = nullptr);

    /// Opening for furnace number 1..8.
    void onOpen(int ofenNr);
    void setCaptions();
    /// `Seite_Act`: every bar from its word (also run by the timer).
    void Seite_Act();
    QPushButton *zurueckTaste() const { return m_zurueck; }
    QSize sizeHint() const override { return {900, 560}; }

Q_SIGNALS:
    /// Button 7: back to the page of the furnace.
    void backToLivePage();

protected:
    void paintEvent(QPaintEvent *) override;
    void resizeEvent(QResizeEvent *) override;

private:
    QRect scale() const;
    QPushButton *m_zurueck = nullptr;
    QTimer m_timer;
};

} // namespace kal
