#pragma once
// A plant with scripted sockets on all nine channels, recording hooks and a
// pinned clock. Scripted sockets stand in for the network because these tests
// decide per tick what each PLC answers.

#include "core/conversions.h"
#include "core/dates.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "link/data_arrival.h"
#include "link/polling.h"
#include "support/fresh.h"
#include "support/hex.h"
#include "support/scripted_socket.h"

#include <QMap>
#include <vector>

namespace kal::test {

/// The PLC's packed time stamp of a date: words A and B.
inline std::pair<i16, i16> PlcStamp(const QDateTime &d)
{
    return {static_cast<i16>((d.date().day() << 11) | (d.date().month() << 7) | (d.date().year() - 2000)),
            static_cast<i16>((d.time().hour() << 11) | (d.time().minute() << 5) | (d.time().second() / 2))};
}

/// `kopf` header bytes, the byte count when `zaehler`, the words high byte first.
inline QByteArray answerFrame(int kopf, bool zaehler, const std::vector<i16> &worte)
{
    QByteArray b(kopf, '\0');
    if (zaehler)
        b.append(static_cast<char>(2 * worte.size()));
    for (i16 w : worte)
        b.append(MKI_BE(w));
    return b;
}
inline QByteArray udpReply(const std::vector<i16> &w) { return answerFrame(10, false, w); }
inline QByteArray modbusReply(const std::vector<i16> &w) { return answerFrame(8, true, w); }

inline std::vector<i16> wordSequence(int n, int ab)
{
    std::vector<i16> w;
    for (int i = 0; i < n; ++i)
        w.push_back(static_cast<i16>(ab + i));
    return w;
}

class ScriptedPlant : public FreshProcess {
protected:
    std::array<ScriptedSocket *, KANAL_MAX> sock{};
    std::vector<int> chargen;   ///< furnace numbers handed to the recorder
    std::vector<int> meldungen; ///< ±n reported by the message scan
    QMap<int, QString> &panel = scr.panel; ///< panel index -> text
    QDateTime jetzt = QDateTime(QDate(2024, 3, 15), QTime(10, 0, 0), Qt::UTC);

    void SetUp() override
    {
        FreshProcess::SetUp();
        sock = installScriptedSockets();
        connectReceivers();
        hooks.Charge_Schreiben = [this](int nr) { chargen.push_back(nr); };
        hooks.MeldEintrag = [this](int, int n) { meldungen.push_back(n); };
        setNow(jetzt);
        plant.Sprachtext(0, 0) = QStringLiteral("Ofen");
        plant.Sprachtext(0, 7) = QStringLiteral("Connect");
        plant.Sprachtext(0, 8) = QStringLiteral("Offline");
        plant.Sprachtext(0, 9) = QStringLiteral("Online");
        // The start values the station sets before its first tick.
        for (int k = 0; k < KANAL_MAX; ++k)
            plant.IP_Adr[k] = plant.UDP_Read_Adr[k] = plant.UDP_Write_Adr[k] = -1;
        for (int f = 0; f < OFEN_MAX; ++f)
            plant.Meld_Seite[f] = -1;
        plant.Next_Ofen = -1;
        plant.LogList.clear();
    }

    /// A furnace at 10.0.0.(11 + f), enabled, its socket connected.
    void Ofen(int f, bool udp, i16 typ = 0)
    {
        const u8 ip[] = {10, 0, 0, static_cast<u8>(11 + f)};
        for (int k = 0; k < 4; ++k)
            plant.Ofen_IP(f, k) = ip[k];
        plant.Ofen_Aktiv[f] = -1;
        plant.Ofen_UDP[f] = udp ? -1 : 0;
        plant.Ofen_Typ[f + 1] = plant.SPS_Wort(f, 29) = typ;
        plant.Ofen_Basis[f] = typ < 0 ? static_cast<i16>(typ & 0xFFF) : 0;
        sock[f]->state = SCK_CONNECTED;
    }
};

} // namespace kal::test
