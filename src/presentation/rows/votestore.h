// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QMap>
#include <QObject>
#include <QSettings>
#include <QUuid>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>

class QJSEngine;
class QQmlEngine;

namespace velto::presentation
{

/// What the user thinks of answers. Kept on this machine only, in the settings, for the account of
/// the operating system: a sign-out leaves it. One instance per process, on the main thread.
class VoteStore final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    enum class FeedbackVote { None, Up, Down };
    Q_ENUM(FeedbackVote)

    /// No more votes than these are kept.
    static constexpr qsizetype mostVotes = 500;

    /// The instance that QML sees.
    [[nodiscard]] static VoteStore &instance();
    static VoteStore *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    /// Reads and writes `settings`, when first asked for a vote.
    explicit VoteStore(std::unique_ptr<QSettings> settings);

    [[nodiscard]] Q_INVOKABLE velto::presentation::VoteStore::FeedbackVote
    vote(const QUuid &message);
    /// `None` withdraws. Beyond `mostVotes` those go whose keys come first in the alphabet.
    Q_INVOKABLE void setVote(velto::presentation::VoteStore::FeedbackVote vote,
                             const QUuid &message);

private:
    using Votes = QMap<QString, QString>; ///< Upper-case id to "up" or "down".

    [[nodiscard]] Votes &votes();
    void write();

    std::unique_ptr<QSettings> m_settings;
    std::optional<Votes> m_votes;
};

} // namespace velto::presentation
