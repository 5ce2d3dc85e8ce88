// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/businstance.h"

#include <gtest/gtest.h>

// Runs where there is no session bus.
namespace velto::platform
{

TEST(InstanceWithoutABus, isTheSoleOne)
{
    BusInstance instance;
    instance.claim();
    EXPECT_EQ(instance.standing(), Instance::Standing::Sole);
    EXPECT_EQ(instance.handOver({}), Instance::Standing::Sole);
    instance.release();
}

TEST(LaunchToken, isTheDesktopsNewerOneWhereThereAreTwo)
{
    qunsetenv("XDG_ACTIVATION_TOKEN");
    qunsetenv("DESKTOP_STARTUP_ID");
    EXPECT_EQ(launchToken(), QByteArray());
    qputenv("DESKTOP_STARTUP_ID", "x11_TIME1");
    EXPECT_EQ(launchToken(), "x11_TIME1");
    qputenv("XDG_ACTIVATION_TOKEN", "wayland");
    EXPECT_EQ(launchToken(), "wayland");
}

} // namespace velto::platform
