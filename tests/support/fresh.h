#pragma once
// The fresh process every test starts from: resetPlant() zeroes the plant and
// puts back every subsystem's own state, the hooks and the channel sockets;
// then the test's scripted dialogs and recording screen are installed in place
// of the main window's. TearDown resets again and takes them out, so nothing
// leaks into the next test of the same executable.

#include "core/plant_state.h"
#include "support/recording_screen.h"
#include "support/scripted_dialogs.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace kal::test {

class FreshProcess : public ::testing::Test {
protected:
    ScriptedDialogs dlg;
    RecordingScreen scr;

    void SetUp() override
    {
        resetPlant();
        setDialogs(&dlg);
        setScreen(&scr);
    }
    void TearDown() override
    {
        resetPlant();
        setDialogs(nullptr);
        setScreen(nullptr);
    }
};

/// Two values compared as one, for a pair of fields that belong together.
inline std::pair<int, int> both(int a, int b)
{
    return {a, b};
}

/// The number of the RunError that `f` raises; 0 when it raises none.
inline int runError(const std::function<void()> &f)
{
    try {
        f();
    } catch (const RunError &e) {
        return e.number;
    }
    return 0;
}

} // namespace kal::test
