#pragma once
// The logic of the live page `KM_Menue`: one row per furnace with its state in
// plain words and colour, set and actual temperature and where its program
// stands, and the choice of the furnace whose detail the page shows.
//
// The rows are computed from the word image and the per-furnace fields into
// `Seite` by `Seite_Act`; the form paints `Seite` and passes its clicks on.
// Status colours blink by comparing with the colour of the last refresh, so
// `Seite` is also the memory of the page between two refreshes.

#include "core/plant_state.h"
#include "operation/status_colours.h"

#include <QString>
#include <QStringList>
#include <array>
#include <functional>

namespace kal {

/// One row of the page.
struct PageRow {
    QString OfenSelect;                 ///< furnace button: number, name, block 0 time, "  CSV"
    QString OfenSelect_Tipp;            ///< tool text, set when the row was clicked
    bool Markiert = false;              ///< the furnace whose detail is shown
    QString Status;
    ColourValue Status_Farbe = Farbe_Normal;
    QString Befehl;                     ///< running segment
    QString Soll_Bef;                   ///< its target
    QString Sollwert;
    QString Istwert;
    QString Stellwert;                  ///< forecast program end
    int Seg = 0;                        ///< last segment number read (word 41)
    int Art = 0;                        ///< last segment kind read (word 42)
};

/// What the detail area below the rows shows.
enum class PageDetailKind {
    Keine,       ///< no furnace selected: detail controls hidden
    Kurve,       ///< online curve of the selected furnace
    Transport,   ///< transport picture (furnace with identity block at 50)
};

struct PageImage {
    std::array<PageRow, OFEN_MAX> Zeile;
    PageDetailKind Detail = PageDetailKind::Keine;
    QString Label2;
    QString Label3;
    bool Taste_Aktiv = false;           ///< the detail buttons
};

/// The page as last computed.
extern PageImage Seite;

/// `Seite_Act`: recomputes every row of `bild` from the plant (offline and
/// online texts, status colour with its blink, temperatures, segment and
/// program end), then the selection and the detail area.
void Seite_Act(PageImage &bild);

/// `OfenSelect` click on row `n` (0..7): remembers it, sets the tool text
/// (name and serial) and, when the furnace is online, selects it for the
/// detail area. True when it was selected.
bool furnaceRowClicked(PageImage &bild, int n);

/// `Kein_Ofen`: clears the page's selection: no row marked, the labels
/// emptied, the detail buttons disabled.
void Kein_Ofen(PageImage &bild);

/// The form closed: no furnace on view.
void livePageClosed();

// ---- slow refresh ---------------------------------------------------------------

/// Counted down by the main cycle once a tick, towards 0.
void countPageWait();
/// The page's own timer. While the USB import runs, the tick is its step and
/// the rows stand still; otherwise, when the wait has run out, it sets the
/// count to 3 and runs `Seite_Act` on `Seite`. True after a refresh.
bool pageTick();
/// The next page timer refreshes at once (after the message form closed).
void refreshPageNow();

/// Title and lines of the detail area for the selected furnace index while no
/// live curve is shown there: serial and description, set, actual value and
/// output, program start and forecast end, the open batch.
struct PageDetail {
    QString titel;
    QStringList zeilen;
};
PageDetail pageDetailText(int ofen);

/// The element list `RX_List` of furnace number 1..8: the history of its
/// heating element figures, oldest first, one line a record (time and the
/// figure of each element); the caption "Elemente", with ", Charge " and the
/// serial while the PLC's batch number differs from the open batch.
struct ElementHistory {
    QString caption;
    QStringList zeilen;
};
ElementHistory elementHistory(int ofenNr);

/// `Block0_Zeit` of a furnace index from its last block 0 stamp, in the form
/// "TTMMJJHHMM"; empty while the stamp is not readable. The main cycle calls
/// it for each online furnace.
void updateBlock0Time(int ofen);

} // namespace kal
