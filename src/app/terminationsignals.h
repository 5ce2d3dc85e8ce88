// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class QSocketNotifier;

namespace velto::app
{

/// Turns SIGTERM, SIGINT and SIGHUP into an ordinary end of the event loop. One instance at most.
class TerminationSignals final : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);

private:
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace velto::app
