#pragma once
// The furnace's 48 messages (words 87..89, message n = bit (n-1) mod 16 of
// word 87 + (n-1) div 16) and their configuration (words 690..699).
//
// A message comes when its cause appears and is latched: it stays until its
// cause is gone and it has been acknowledged (command value 4 in word 30),
// in either order. The configuration words say which messages stop the
// program (690..692), switch to nitrogen (693..695) and go out by SMS
// (696..698); word 699 carries 0xAB in its high byte when a configuration is
// there, and in its low bits whether a message (bit 0), a stop message (1),
// a nitrogen message (2) or an SMS message (3) is active.

#include <QVector>
#include <array>

namespace kal::sim {

class WordImage;

class MessageBank {
public:
    static constexpr int kMessages = 48;

    /// The cause of message n (1..48) appears; the message comes.
    void raise(int n);
    /// The cause of message n is gone. With waitForAck the message stays until
    /// it is acknowledged; without, it goes at once.
    void clear(int n, bool waitForAck = true);
    /// The operator's acknowledgement: every message whose cause is gone goes.
    void acknowledge();
    bool active(int n) const;
    bool cause(int n) const;

    /// Words 87..89, and the status bits of 699 when a configuration is there.
    void writeWords(WordImage &image) const;
    /// A message that stops the program (by words 690..692) is active.
    bool stopActive(const WordImage &image) const;

    /// Writes a configuration into 690..699: message numbers per kind.
    static void configure(WordImage &image, const QVector<int> &stop, const QVector<int> &n2,
                          const QVector<int> &sms);

private:
    std::array<bool, kMessages> cause_{};
    std::array<bool, kMessages> latched_{};
};

} // namespace kal::sim
