// Channel 8 of the panel server and the TCP channel of the furnace behind
// it: answers of any length and content.
// The answers are taken apart as receive.h describes.

#include "support/fuzz_support.h"
#include "support/receive.h"

void kal::fuzz::fuzzSetUp()
{
    receiveSetUp(Kanal_Art::Server);
}

void kal::fuzz::fuzzOne(Input &in)
{
    runAnswers(in);
}
