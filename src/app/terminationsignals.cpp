// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "terminationsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace velto::app
{

namespace
{

int wakeUpPipe[2] = {-1, -1};

void wakeUp(int)
{
    const char byte = 0;
    // Nothing can be done here about a full pipe, and then one byte is in it already.
    [[maybe_unused]] const ssize_t written = write(wakeUpPipe[1], &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    if (pipe2(wakeUpPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals keep their default, which ends the process too
    m_notifier = new QSocketNotifier(wakeUpPipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    struct sigaction action
    {};
    action.sa_handler = wakeUp;
    action.sa_flags = SA_RESTART | SA_RESETHAND; // a second signal ends the process at once
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        sigaction(number, &action, nullptr);
}

} // namespace velto::app
