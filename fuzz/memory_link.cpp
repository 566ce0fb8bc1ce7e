// A memory link furnace's UDP channel: answers of any length and content.
// The answers are taken apart as receive.h describes.

#include "support/fuzz_support.h"
#include "support/receive.h"

void kal::fuzz::fuzzSetUp()
{
    receiveSetUp(Kanal_Art::Panel);
}

void kal::fuzz::fuzzOne(Input &in)
{
    runAnswers(in);
}
