// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

#include <memory>

namespace velto::platform
{

/// What somebody started velto for.
struct Launch
{
    /// What to open; empty when velto itself is wanted.
    QList<QUrl> urls;
    /// The desktop's word for the user's click that led here, so that the window may come forward;
    /// empty where there is none.
    QByteArray token;

    bool operator==(const Launch &) const = default;
};

/// The one velto of a session. Whoever is started later hands over what it was started for and
/// ends; the desktop asks the one that runs, too. Main thread.
class Instance : public QObject
{
    Q_OBJECT

public:
    enum class Standing {
        Sole,      ///< There is no other, or no session to ask: go on.
        Successor, ///< There was one that didn't answer, and it has been told to go: go on.
        Second,    ///< Another one runs.
    };

    /// Begins to ask the session, on another thread. Once.
    virtual void claim() = 0;
    /// How that ended. Waits for it, a moment at most.
    [[nodiscard]] virtual Standing standing() = 0;
    /// Of a second one: has the other do what `launch` says, and waits until it has heard. When it
    /// doesn't answer in time, takes its place. Gives the standing after that.
    [[nodiscard]] virtual Standing handOver(const Launch &launch) = 0;
    /// Lets go of the session, so that the next start is a new one.
    virtual void release() = 0;

signals:
    /// velto is wanted, or something is to be opened. Never before the event loop runs.
    void launched(const velto::platform::Launch &launch);
    void newChatRequested(const QByteArray &token);
    void quitRequested();
    /// Another one has taken this one's place.
    void replaced();
};

[[nodiscard]] std::unique_ptr<Instance> makeSystemInstance();

/// The token that this process was started with. To be asked before there is an application, which
/// takes it out of the environment.
[[nodiscard]] QByteArray launchToken();

} // namespace velto::platform
