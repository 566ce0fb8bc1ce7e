// The entry points of libFuzzer, compiled into every target (not into the
// seed maker, which has a main of its own).

#include "support/fuzz_support.h"

#include <QDir>

__attribute__((weak)) void kal::fuzz::fuzzSetUp() {}

namespace {

/// libFuzzer reads its corpus folders and writes its findings relative to the
/// working folder it was started in.
struct Arbeitsordner {
    QString pfad = QDir::currentPath();
    ~Arbeitsordner() { QDir::setCurrent(pfad); }
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    Arbeitsordner backToLivePage;
    kal::fuzz::fuzzSetUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Arbeitsordner backToLivePage;
    kal::fuzz::Input in(data, size);
    kal::fuzz::fuzzOne(in);
    return 0;
}
