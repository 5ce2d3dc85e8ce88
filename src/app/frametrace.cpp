// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "frametrace.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickWindow>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <vector>

namespace velto::app
{

namespace
{

double milliseconds(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// How long ago the desktop says an event was, by a clock of 32 bits that may be the system's.
double age(const QInputEvent &event)
{
    constexpr std::uint32_t longest = 10000; // it is another clock, then
    const auto now =
        static_cast<std::uint32_t>(static_cast<std::uint64_t>(milliseconds(CLOCK_MONOTONIC)));
    const std::uint32_t since = now - static_cast<std::uint32_t>(event.timestamp());
    return since < longest ? since : 0;
}

void print(const char *what, std::vector<double> costs)
{
    if (costs.empty())
        return;
    std::ranges::sort(costs);
    const auto at = [&costs](double share) {
        return costs[static_cast<std::size_t>(share * static_cast<double>(costs.size() - 1))];
    };
    std::printf("[app] %s %zu p50 %.2f p95 %.2f p99 %.2f max %.2f ms\n", what, costs.size(),
                at(0.5), at(0.95), at(0.99), costs.back());
    std::fflush(stdout);
}

class Trace final : public QObject
{
public:
    explicit Trace(QQuickWindow &window)
        : QObject(&window)
    {
        window.installEventFilter(this);
        connect(&window, &QQuickWindow::frameSwapped, this, [this] { noteFrame(); });
        connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
            print("frames", m_frames);
            print("keys", m_keys);
        });
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto *key = static_cast<QKeyEvent *>(event);
        if (!key->text().isEmpty())
            m_pressed.push_back(milliseconds(CLOCK_MONOTONIC) - age(*key));
        return false;
    }

private:
    void noteFrame()
    {
        const double worked = milliseconds(CLOCK_THREAD_CPUTIME_ID);
        m_frames.push_back(worked - m_last);
        m_last = worked;
        const double now = milliseconds(CLOCK_MONOTONIC);
        for (const double pressed : m_pressed)
            m_keys.push_back(now - pressed);
        m_pressed.clear();
    }

    double m_last = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    std::vector<double> m_frames;
    std::vector<double> m_pressed;
    std::vector<double> m_keys;
};

} // namespace

void traceFrames(QQuickWindow &window)
{
    new Trace(window);
}

} // namespace velto::app
