#pragma once
// The receive handler of all nine channels.
//
// Memory link answers (UDP channels and channel 8) carry a 10-byte header and
// then the words, high byte first; where they go is decided only by the
// address noted when the request was sent (`UDP_Read_Adr`, else
// `UDP_Write_Adr`). Channel 8 answers go into `Server_Wort` first and then to
// the furnace whose server window holds them. Modbus answers (TCP channels)
// are collected in `Empfang_Puffer`; their words start at byte 10, the count
// of data bytes is byte 9, and they are stored only while `Lese_Antwort` says
// the last Modbus frame was a read. Nothing of an answer is checked beyond
// this: a wrong answer goes where the channel's noted address says.
//
// A failure (an address past the image, more than 1000 bytes) ends the
// handler and leaves its step number in `Empfang_Fehler` of the channel,
// which the status panel shows as " Fehler" and the number.

namespace kal {

/// `DataArrival(Index, bytesTotal)`: an answer arrived on channel `Index`
/// (0..8). Fetches the bytes from `Winsock1[Index]`, stores the words and runs
/// `Block_Decode`. Never throws.
void DataArrival(int Index, int bytesTotal);

/// Routes the receive events of every channel of `Winsock1` to DataArrival.
void connectReceivers();

} // namespace kal
