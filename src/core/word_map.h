#pragma once
// The words of a furnace's PLC image `SPS_Wort` that the station reads or
// writes, one name per word. A range is named by its first word; the comment
// says how far it goes. Words that only the simulator knows are not here.

namespace kal::word {

constexpr int HOURS_TCP = 7;          ///< 7, 8: operating hours on Modbus, low half first
constexpr int START_FLAGS = 9;        ///< bit 14: a timed program start is set
constexpr int CONTROLLER_EXTRA = 10;  ///< further value of the first controller (controller form)
constexpr int START_HOUR = 16;        ///< hour of the timed start
constexpr int START_MINUTE = 17;      ///< minute of the timed start
constexpr int TYPE = 29;              ///< type word, the layout of `Ofen_Typ`
constexpr int COMMAND = 30;           ///< command word (4 acknowledges the messages)
constexpr int STATUS = 37;            ///< bit 0 program runs, bit 1 program held
constexpr int SEGMENT = 41;           ///< running segment, 1-based; below 1 none
constexpr int SEGMENT_KIND = 42;      ///< kind of the running segment
constexpr int SET_VALUE = 43;         ///< set value of the first controller, 0.1 °C
constexpr int ACTUAL_VALUE = 44;      ///< actual value of the first controller, 0.1 °C
constexpr int OUTPUT = 45;            ///< output of the first controller, %
constexpr int PID_P = 47;             ///< first controller: proportional band, 1/100
constexpr int PID_I = 48;             ///< first controller: integral time, 1/10
constexpr int PID_D = 49;             ///< first controller: derivative time, 1/10
constexpr int PID_SAMPLE = 52;        ///< first controller: sample time, 1/100
constexpr int REMAINING = 57;         ///< remaining time of the segment, 1/100 h
constexpr int CLOCK_STEP = 58;        ///< clock step command to the panel
constexpr int HOURS_UDP = 67;         ///< 67, 68: operating hours on the memory link
constexpr int PROGRAM_STATE = 74;     ///< bits 0 and 1 both clear: no program runs
constexpr int STAMP = 80;             ///< 80, 81: time stamp of block 0 (word A, word B)
constexpr int MESSAGES = 87;          ///< 87..89: the 48 message bits
constexpr int MESSAGE_SMS_COPY = 96;  ///< 96..98: copy of the SMS bits the panel shows
constexpr int DESCRIPTION_2 = 90;     ///< 90..96: characters 17..30 of `PLC_Bezeichnung`
constexpr int SEGMENT_COMMANDS = 100; ///< 100..119: command of segment 1..20 (low 4 bits)
constexpr int SEGMENT_TARGETS = 120;  ///< 120..139: segment n starts at 119 + n, ends at 120 + n
constexpr int SEGMENT_TIMES = 140;    ///< 140..159: time or rate of segment n at 139 + n
constexpr int SEGMENT_FIFTH = 160;    ///< 160..179: fifth value of segment n at 159 + n
constexpr int DESCRIPTION_1 = 180;    ///< 180..187: characters 1..16 of `PLC_Bezeichnung`
constexpr int NAME = 200;             ///< 200..207: `PLC_Name`, 16 characters
constexpr int SERIAL = 208;           ///< 208..213: `PLC_Serie`, 12 characters
constexpr int VERSION = 214;          ///< `PLC_Version`, 2 characters
constexpr int SERVER = 215;           ///< high byte server window, low byte `Server_IP4`
constexpr int IDENTITY_216 = 216;     ///< 216..218: compared with `Ofen_Wert216`..`Ofen_Wert218`
constexpr int ELEMENT_CODE = 278;     ///< element count (hundreds) and tracks (rest)
constexpr int ELEMENT_REST = 279;     ///< `Element_Rest`
constexpr int ELEMENT_CURRENTS = 460; ///< 460..477: live current of heating element 1..18, A
constexpr int ELEMENT_SCALE = 478;    ///< upper end of the element current scale, A; 0 none
constexpr int EXCHANGE = 300;         ///< 300..399: exchange window of text load and program transfer
constexpr int PAGE_TRACKS = 300;      ///< track page: 300, 308, 316, 324, four names of 8 characters
constexpr int PAGE_NAMES = 332;       ///< track page: 332, 340, two names of 16 characters
constexpr int PAGE_CODES = 348;       ///< track page: 348..369, eleven code pairs A, B
constexpr int PAGE_TEXTS = 300;       ///< text page: 300, 320, 340, 360, four texts of 22 characters
constexpr int MESSAGE_STOP = 690;     ///< 690..692: message stops the program
constexpr int MESSAGE_N2 = 693;       ///< 693..695: message switches to nitrogen
constexpr int MESSAGE_SMS = 696;      ///< 696..698: message goes out by SMS
constexpr int MESSAGE_CODE = 699;     ///< high byte 0xAB: the configuration 690..699 is valid

/// The last word of each 100-word block; its arrival closes the block.
constexpr int BLOCK0_END = 99;
constexpr int BLOCK1_END = 199;
constexpr int BLOCK2_END = 299;
constexpr int BLOCK3_END = 399;
constexpr int BLOCK6_END = 699;

} // namespace kal::word
