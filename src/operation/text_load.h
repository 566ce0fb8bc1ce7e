#pragma once
// The text load: a furnace with a version word hands over the texts of its
// messages, its four track names, two 16-character names and its code table
// through the page word `Prog_Page` (388, or 1088 on the large layout) and the
// exchange window 300..399.
//
// The station asks by writing a request into the page word, the PLC answers
// with 1000 plus the request and the page in the window:
//   122        track page: names at 300, 308, 316, 324 (8 characters), the two
//              16-character names at 332 and 340, code pairs from 348
//   110..121   message texts 4p+1 .. 4p+4 of page p = request - 110, at 300,
//              320, 340 and 360 (22 characters each)
//   170        the PLC wants the word cleared
// `Meld_Seite` counts the pages still to fetch: 13 at the start (the track
// page), then 12 (identity block at 50: 48 messages) or 8 (32 messages) down
// to 0; the request is the counter + 109. -1 means no load.

namespace kal {

/// Counter value that starts a load (its request is the track page, 122).
constexpr int TEXT_LOAD_START = 13;

/// `Load_Text(furnace number 1..8)`, run by the decoder after block 3 of a
/// furnace arrived while its `Meld_Seite` is at or above 0 and no write is
/// pending. Takes the page the PLC answered, then asks for the next one;
/// when every page is in, clears the page word, stores the texts that changed
/// in the message store (records 1..32 or 1..48, 97, 98), saves the
/// configuration with the PLC's identity and ends the load (-1).
///
/// The page word is shared with the program transfer: while it carries a
/// program request the load waits, and a place the PLC answered stays for one
/// more block before the load asks on.
///
/// A page is taken only when it answers the request that stands, so a read
/// that still shows the page before (a slow PLC, a link lost in between) asks
/// again instead of skipping a page: a load cut by a lost link goes on from
/// its counter when the furnace is back.
void Load_Text(int ofenNr);

} // namespace kal
