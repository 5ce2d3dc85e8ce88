// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/votestore.h"

#include <QQmlEngine>
#include <QVariantMap>

namespace velto::presentation
{

namespace
{

const QString settingsKey = QStringLiteral("velto.feedback.votes.v1");

QString keyOf(const QUuid &message)
{
    return message.toString(QUuid::WithoutBraces).toUpper();
}

QString text(VoteStore::FeedbackVote vote)
{
    return vote == VoteStore::FeedbackVote::Up ? QStringLiteral("up") : QStringLiteral("down");
}

} // namespace

VoteStore &VoteStore::instance()
{
    static VoteStore store(std::make_unique<QSettings>());
    return store;
}

VoteStore *VoteStore::create(QQmlEngine *, QJSEngine *)
{
    QQmlEngine::setObjectOwnership(&instance(), QQmlEngine::CppOwnership);
    return &instance();
}

VoteStore::VoteStore(std::unique_ptr<QSettings> settings)
    : m_settings(std::move(settings))
{}

VoteStore::Votes &VoteStore::votes()
{
    if (m_votes)
        return *m_votes;
    m_votes.emplace();
    const QVariant stored = m_settings->value(settingsKey);
    if (stored.typeId() != QMetaType::QVariantMap)
        return *m_votes;
    Votes read;
    const QVariantMap map = stored.toMap();
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        if (entry.value().typeId() != QMetaType::QString)
            return *m_votes;
        read.insert(entry.key(), entry.value().toString());
    }
    m_votes = read;
    return *m_votes;
}

VoteStore::FeedbackVote VoteStore::vote(const QUuid &message)
{
    const QString stored = votes().value(keyOf(message));
    if (stored == text(FeedbackVote::Up))
        return FeedbackVote::Up;
    if (stored == text(FeedbackVote::Down))
        return FeedbackVote::Down;
    return FeedbackVote::None;
}

void VoteStore::setVote(FeedbackVote vote, const QUuid &message)
{
    if (vote == FeedbackVote::None)
        votes().remove(keyOf(message));
    else
        votes().insert(keyOf(message), text(vote));
    while (votes().size() > mostVotes)
        votes().erase(votes().cbegin());
    write();
}

void VoteStore::write()
{
    QVariantMap map;
    for (auto entry = votes().cbegin(); entry != votes().cend(); ++entry)
        map.insert(entry.key(), entry.value());
    m_settings->setValue(settingsKey, map);
}

} // namespace velto::presentation
