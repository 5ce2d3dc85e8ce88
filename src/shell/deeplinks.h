// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QUrl>

namespace velto::chat
{
class AppState;
}

namespace velto::shell
{

/// Hands velto's own links to the state, each as a task of its own, in order. Those that come
/// before the main window stands wait for it. Main thread.
class DeepLinks final
{
public:
    explicit DeepLinks(chat::AppState &state)
        : m_state(state)
    {}

    void open(const QList<QUrl> &links);
    /// The main window stands.
    void begin();

private:
    chat::AppState &m_state;
    QList<QUrl> m_waiting;
    bool m_begun = false;
};

} // namespace velto::shell
