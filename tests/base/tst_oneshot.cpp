// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "base/oneshot.h"

#include <QCoroTask>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace
{

using velto::base::OneShot;

struct Shot
{
    OneShot<int> value;
};

QCoro::Task<void> collect(OneShot<int> shot, std::vector<int> &out, int tag)
{
    out.push_back(tag * 100 + co_await shot);
}

QCoro::Task<void> destroyWhenResumed(OneShot<int> shot, std::unique_ptr<Shot> &owner)
{
    co_await shot;
    owner.reset();
}

TEST(OneShot, ResumesEveryWaiterInTheOrderOfTheirComing)
{
    OneShot<int> shot;
    std::vector<int> out;
    const auto first = collect(shot, out, 1);
    const auto second = collect(shot, out, 2);
    const auto third = collect(shot, out, 3);
    EXPECT_TRUE(out.empty());
    EXPECT_TRUE(shot.resolve(7));
    EXPECT_EQ(out, (std::vector{107, 207, 307}));
}

TEST(OneShot, DoesNotSuspendWhoComesAfterTheValue)
{
    OneShot<int> shot;
    shot.resolve(5);
    std::vector<int> out;
    const auto late = collect(shot, out, 1);
    EXPECT_EQ(out, std::vector{105});
    EXPECT_TRUE(late.isReady());
}

TEST(OneShot, TheFirstValueCounts)
{
    OneShot<int> shot;
    EXPECT_FALSE(shot.isResolved());
    EXPECT_TRUE(shot.resolve(1));
    EXPECT_FALSE(shot.resolve(2));
    std::vector<int> out;
    const auto reader = collect(shot, out, 0);
    EXPECT_EQ(out, std::vector{1});
}

TEST(OneShot, CopiesShareTheValue)
{
    OneShot<int> shot;
    OneShot<int> copy = shot;
    std::vector<int> out;
    const auto reader = collect(shot, out, 0);
    copy.resolve(9);
    EXPECT_EQ(out, std::vector{9});
    EXPECT_TRUE(shot.isResolved());
}

TEST(OneShot, MayBeDestroyedByAWaiterWhileOthersStillWait)
{
    auto owner = std::make_unique<Shot>();
    std::vector<int> out;
    const auto destroyer = destroyWhenResumed(owner->value, owner);
    const auto other = collect(owner->value, out, 1);
    owner->value.resolve(3);
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(out, std::vector{103});
}

QCoro::Task<void> waitAgain(OneShot<int> shot, std::vector<int> &out)
{
    out.push_back(co_await shot);
    out.push_back(co_await shot);
}

TEST(OneShot, AWaiterMayWaitAgainWhileItIsResumed)
{
    OneShot<int> shot;
    std::vector<int> out;
    const auto reader = waitAgain(shot, out);
    shot.resolve(4);
    EXPECT_EQ(out, (std::vector{4, 4}));
}

} // namespace
