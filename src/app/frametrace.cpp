// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "frametrace.h"

#include <QCoreApplication>
#include <QQuickWindow>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <memory>
#include <vector>

namespace velto::app
{

namespace
{

double threadMilliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

struct Frames
{
    double last = threadMilliseconds();
    std::vector<double> costs;

    void note()
    {
        const double now = threadMilliseconds();
        costs.push_back(now - last);
        last = now;
    }

    void print()
    {
        if (costs.empty())
            return;
        std::ranges::sort(costs);
        const auto at = [this](double share) {
            return costs[static_cast<std::size_t>(share * static_cast<double>(costs.size() - 1))];
        };
        std::printf("[app] frames %zu p50 %.2f p95 %.2f p99 %.2f max %.2f ms\n", costs.size(),
                    at(0.5), at(0.95), at(0.99), costs.back());
        std::fflush(stdout);
    }
};

} // namespace

void traceFrames(QQuickWindow &window)
{
    const auto frames = std::make_shared<Frames>();
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [frames] { frames->note(); });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window, [frames] { frames->print(); });
}

} // namespace velto::app
