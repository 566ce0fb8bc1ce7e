#include "link/channels.h"

#include "config/text_ids.h"
#include "core/plant_state.h"
#include "core/screen.h"
#include "link/socket.h"

#include <exception>

namespace kal {

namespace {

/// Runs one step of the channel set-up; a failing step is skipped and the
/// set-up goes on with the next one.
template <typename F>
void proceed(F &&schritt)
{
    try {
        schritt();
    } catch (const std::exception &) {
    }
}

} // namespace

QString signedText(int n)
{
    return n < 0 ? QString::number(n) : QLatin1Char(' ') + QString::number(n);
}

QString furnaceAddress(int ofen)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(plant.Ofen_IP(ofen, 0))
        .arg(plant.Ofen_IP(ofen, 1))
        .arg(plant.Ofen_IP(ofen, 2))
        .arg(plant.Ofen_IP(ofen, 3));
}

QString furnaceTag(int ofen)
{
    QString art;
    if (plant.Ofen_Seriell[ofen] != 0)
        art = QStringLiteral("S:");
    else if (plant.Ofen_UDP[ofen] == -1)
        art = QStringLiteral("P:");
    else if (plant.Server_IP4[ofen] != 0)
        art = QStringLiteral("M:");
    else
        art = QStringLiteral("T:");
    return art + QString::number((ofen + 1) % 10);
}

void Status_Panel(int ofen, const QString &text)
{
    screen().Status_Panel(ofen + 1, text);
}

void Kanal_Setup(int ofen)
{
    QString adresse;
    proceed([&] { adresse = furnaceAddress(ofen); });
    proceed([&] {
        plant.Meld_Config_Da[ofen] = 0;
        Ist_GKD(ofen);
    });
    proceed([&] {
        Socket &s = Winsock1[ofen];
        s.Close();
        s.RemoteHost = adresse;
        if (plant.Ofen_UDP[ofen] == -1) {
            s.Protocol = SocketProtocol::UDP;
            s.RemotePort = Panel_Port;
        } else if (plant.Ofen_UDP[ofen] == 0) {
            s.Protocol = SocketProtocol::TCP;
            s.RemotePort = plant.Modbus_Port;
        }
    });

    QString panel;
    proceed([&] { panel = Text_Id(text::FURNACE) + signedText(ofen + 1) + QStringLiteral(" IP:") + adresse; });
    proceed([&] {
        const u8 server = plant.Server_IP4[ofen];
        if (server == 0)
            return;
        if (plant.Server_Akt_IP4 == 0) {
            // Channel 8 reaches the panel server in the furnace's own subnet.
            Socket &s = Winsock1[8];
            s.Close();
            s.RemoteHost = QStringLiteral("%1.%2.%3.%4")
                               .arg(plant.Ofen_IP(ofen, 0))
                               .arg(plant.Ofen_IP(ofen, 1))
                               .arg(plant.Ofen_IP(ofen, 2))
                               .arg(server);
            s.Protocol = SocketProtocol::UDP;
            s.RemotePort = Panel_Port;
            s.Connect();
        }
        panel += QStringLiteral(" / .") + QString::number(server);
    });
    proceed([&] { Status_Panel(ofen, panel); });
    // A plant that mixes furnaces with and without a server sets channel 8 up
    // again for each server furnace that follows one without; the socket just
    // gets the same address again.
    proceed([&] { plant.Server_Akt_IP4 = plant.Server_IP4[ofen]; });
}

} // namespace kal
