#pragma once
// Channel set-up of the furnaces and the texts of their status panels.
//
// Each furnace has its own socket (channel = furnace index); furnaces behind a
// panel server also use the shared channel 8. The status bar has one panel per
// furnace, panel index furnace + 1; its text begins with a word of the language
// table ("Connect", "Offline", "Online"), a blank and the furnace's tag
// ("Online T:3"). Numbers put into these texts carry the blank of their sign
// (" Fehler 70", " S 5"), as the station has always written them.

#include <QString>

namespace kal {

/// A number as the station writes it into a text: a blank in front of a
/// number that is not negative, "-" in front of a negative one (" 5", "-5").
QString signedText(int n);

/// Dotted address of a furnace's four `Ofen_IP` octets, without blanks
/// ("192.168.1.20").
QString furnaceAddress(int ofen);

/// Tag of a furnace for its status panel: "P:" memory link over UDP, "M:"
/// Modbus/TCP with a panel server (mixed), "T:" plain Modbus/TCP, "S:" a
/// serial furnace; then the last digit of the furnace number ("P:1").
QString furnaceTag(int ofen);

/// Writes the text of the furnace's status panel (through the main window).
void Status_Panel(int ofen, const QString &text);

/// `Kanal_Setup(furnace)`: sets the furnace's socket up for its address and
/// protocol (UDP to port 1024, or TCP to the Modbus port), closed; clears
/// `Meld_Config_Da`, runs `Ist_GKD`, shows "Ofen 1 IP:a.b.c.d" in the panel.
/// A furnace with a panel server (`Server_IP4` not 0) sets up and connects
/// channel 8 when `Server_Akt_IP4` is 0; `Server_Akt_IP4` then takes this
/// furnace's `Server_IP4`, even 0. Errors on the way are ignored.
void Kanal_Setup(int ofen);

} // namespace kal
