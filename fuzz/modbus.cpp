// A Modbus/TCP furnace's channel: answers of any length and content, in
// segments as TCP delivers them.
// The answers are taken apart as receive.h describes.

#include "support/fuzz_support.h"
#include "support/receive.h"

void kal::fuzz::fuzzSetUp()
{
    receiveSetUp(Kanal_Art::Modbus);
}

void kal::fuzz::fuzzOne(Input &in)
{
    runAnswers(in);
}
