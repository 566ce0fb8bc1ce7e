#pragma once
// A plant with scripted sockets on all nine channels, recording hooks and a
// pinned clock, for the tests of the main cycle, the receive handler and the
// decoder. The scripted sockets stand in for the network because the tests
// drive the cycle tick by tick and decide per tick what a PLC answers.

#include "core/dates.h"
#include "core/dialogs.h"
#include "core/hooks.h"
#include "core/plant_state.h"
#include "link/data_arrival.h"
#include "link/main_cycle.h"
#include "link/polling.h"
#include "link/scripted_socket.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QMap>
#include <utility>
#include <vector>

namespace kal::test {

/// The PLC's packed time stamp of a date (word A, word B).
inline std::pair<i16, i16> Stempel(const QDateTime &d)
{
    const int a = (d.date().day() << 11) | (d.date().month() << 7) | (d.date().year() - 2000);
    const int b = (d.time().hour() << 11) | (d.time().minute() << 5) | (d.time().second() / 2);
    return {static_cast<i16>(a), static_cast<i16>(b)};
}

/// Memory link answer: 10 header bytes, then the words high byte first.
inline QByteArray UDP_Antwort(const std::vector<i16> &worte)
{
    QByteArray b(10, '\0');
    for (i16 w : worte) {
        b.append(static_cast<char>((static_cast<uint16_t>(w) >> 8) & 0xFF));
        b.append(static_cast<char>(w & 0xFF));
    }
    return b;
}

/// Modbus read answer: 8 header bytes, the byte count, the words high byte first.
inline QByteArray Modbus_Antwort(const std::vector<i16> &worte)
{
    QByteArray b(7, '\0');
    b.append(char(3));
    b.append(static_cast<char>(2 * worte.size()));
    for (i16 w : worte) {
        b.append(static_cast<char>((static_cast<uint16_t>(w) >> 8) & 0xFF));
        b.append(static_cast<char>(w & 0xFF));
    }
    return b;
}

inline int Adresse_im_Rahmen(const QByteArray &r, int pos)
{
    return (static_cast<uint8_t>(r[pos]) << 8) | static_cast<uint8_t>(r[pos + 1]);
}

class Anlage : public ::testing::Test {
protected:
    std::array<ScriptedSocket *, KANAL_MAX> sock{};
    ScriptedDialogs dlg;
    std::vector<std::pair<int, int>> meldungen; ///< (furnace, ±n)
    std::vector<int> chargen;                   ///< furnace numbers handed to the recorder
    std::vector<int> textLaden;                 ///< furnace numbers of text loads
    std::vector<std::pair<int, bool>> alarme;   ///< (furnace, rebuild)
    QMap<int, QString> panel;                   ///< panel index -> text
    std::vector<bool> regler;
    std::vector<bool> configSchreiben;
    QDateTime jetzt = QDateTime(QDate(2024, 3, 15), QTime(10, 0, 0), Qt::UTC);

    void SetUp() override
    {
        resetPlant();
        Winsock1.clear();
        sock = installScriptedSockets();
        Empfang_Verbinden();
        hooks = Hooks{};
        hooks.MeldEintrag = [this](int f, int n) { meldungen.emplace_back(f, n); };
        hooks.Charge_Schreiben = [this](int nr) { chargen.push_back(nr); };
        hooks.Load_Text = [this](int nr) { textLaden.push_back(nr); };
        hooks.Alarme_Refresh = [this](int f, bool neu) { alarme.emplace_back(f, neu); };
        hooks.Status_Panel = [this](int p, const QString &t) { panel[p] = t; };
        hooks.mnuRegler = [this](bool on) { regler.push_back(on); };
        hooks.Config_Schreiben = [this](bool plc) { configSchreiben.push_back(plc); };
        setDialogs(&dlg);
        setJetzt(jetzt);
        plant.Sprachtext(0, 0) = QStringLiteral("Ofen");
        plant.Sprachtext(0, 7) = QStringLiteral("Connect");
        plant.Sprachtext(0, 8) = QStringLiteral("Offline");
        plant.Sprachtext(0, 9) = QStringLiteral("Online");
        // The start values the station sets before its first tick.
        for (int k = 0; k < KANAL_MAX; ++k) {
            plant.IP_Adr[k] = -1;
            plant.UDP_Read_Adr[k] = -1;
            plant.UDP_Write_Adr[k] = -1;
        }
        for (int f = 0; f < OFEN_MAX; ++f)
            plant.Meld_Seite[f] = -1;
        plant.Next_Ofen = -1;
        LogList.clear();
    }

    void TearDown() override
    {
        Winsock1.clear();
        hooks = Hooks{};
        setDialogs(nullptr);
        setJetzt(QDateTime());
        Zyklus_Uhr_Standard();
        LogList.clear();
    }

    /// A furnace at 10.0.0.(11 + f), enabled, its socket connected.
    void Ofen(int f, bool udp, i16 typ = 0)
    {
        plant.Ofen_IP(f, 0) = 10;
        plant.Ofen_IP(f, 1) = 0;
        plant.Ofen_IP(f, 2) = 0;
        plant.Ofen_IP(f, 3) = static_cast<u8>(11 + f);
        plant.Ofen_Aktiv[f] = -1;
        plant.Ofen_UDP[f] = udp ? -1 : 0;
        plant.Ofen_Typ[f + 1] = typ;
        plant.SPS_Wort(f, 29) = typ;
        plant.Ofen_Basis[f] = typ < 0 ? static_cast<i16>(typ & 0xFFF) : 0;
        sock[f]->state = SCK_CONNECTED;
    }
};

} // namespace kal::test
