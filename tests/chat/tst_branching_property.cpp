// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/branching.h"
#include "chat/messagelistmodel.h"

#include <QAbstractItemModelTester>
#include <QSet>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace velto::chat;

namespace
{

enum class Step { Send, Edit, Switch, Regenerate, Continue };
enum class End { Finished, Stopped, StoppedAtOnce, FailedAtOnce, FailedLater, SessionExpired };

QString words()
{
    return QStringLiteral("w%1").arg(*rc::gen::inRange(0, 1000));
}

void checkInvariants(const QList<ChatMessage> &messages)
{
    for (const ChatMessage &message : messages) {
        if (!message.branches) {
            RC_ASSERT(message.activeBranchIndex == 0);
            continue;
        }
        const QList<ChatBranch> &branches = *message.branches;
        RC_ASSERT(message.role == ChatMessage::Role::User);
        RC_ASSERT(branches.size() >= 2);
        RC_ASSERT(message.activeBranchIndex >= 0);
        RC_ASSERT(message.activeBranchIndex < branches.size());
        QSet<QUuid> ids;
        for (const ChatBranch &branch : branches) {
            ids.insert(branch.id);
            checkInvariants(branch.tail);
        }
        RC_ASSERT(ids.size() == branches.size());
        RC_ASSERT(branches[message.activeBranchIndex].userParts == message.parts);
    }
}

void checkIds(const QList<ChatMessage> &messages)
{
    QSet<QUuid> ids;
    for (const ChatMessage &message : messages)
        ids.insert(message.id);
    RC_ASSERT(ids.size() == messages.size());
}

/// A conversation under random commands, beside a record of how each version looked when it was
/// last on screen.
class Conversation final
{
public:
    void take(Step step)
    {
        switch (step) {
        case Step::Send:
            send();
            break;
        case Step::Edit:
            edit();
            break;
        case Step::Switch:
            switchTo();
            break;
        case Step::Regenerate:
            regenerate();
            break;
        case Step::Continue:
            continueGeneration();
            break;
        }
        checkInvariants(m_messages);
        checkIds(m_messages);
        m_model.setMessages(m_messages);
        RC_ASSERT(m_model.messages() == m_messages);
    }

private:
    using Version = QPair<QUuid, int>;

    void send()
    {
        m_messages.append(newMessage(ChatMessage::Role::User, {textPart(words())}));
        m_messages.append(newMessage(ChatMessage::Role::Assistant));
        run();
    }

    void edit()
    {
        const qsizetype at = anyPosition();
        const QUuid id = at < 0 ? QUuid::createUuid() : m_messages[at].id;
        const QString text = *rc::gen::weightedElement<QString>({{9, words()}, {1, QString()}});
        const auto next = edited(m_messages, id, text);
        const bool can = at >= 0 && !text.isEmpty() && isTurn(at);
        RC_ASSERT(next.has_value() == can);
        if (!can)
            return;
        leave(at);
        RC_ASSERT(next->size() == at + 2);
        RC_ASSERT(next->first(at) == m_messages.first(at));
        RC_ASSERT(next->at(at).plainText() == text);
        RC_ASSERT(next->last().parts.isEmpty());
        checkOthersUntouched(m_messages[at], next->at(at));
        m_messages = *next;
        run();
    }

    void switchTo()
    {
        const qsizetype at = anyPosition();
        if (at < 0)
            return;
        const ChatMessage turn = m_messages[at];
        const int count = turn.branches ? static_cast<int>(turn.branches->size()) : 0;
        const int index = *rc::gen::inRange(-1, count + 2);
        const auto next = switched(m_messages, turn.id, index);
        const bool can = index >= 0 && index < count && index != turn.activeBranchIndex;
        RC_ASSERT(next.has_value() == can);
        if (!can)
            return;
        leave(at);
        RC_ASSERT(next->first(at) == m_messages.first(at));
        RC_ASSERT(next->at(at).activeBranchIndex == index);
        checkOthersUntouched(turn, next->at(at));
        const auto seen = m_left.constFind({turn.id, index});
        RC_ASSERT(seen != m_left.constEnd());
        RC_ASSERT(next->at(at).parts == seen->userParts);
        RC_ASSERT(next->sliced(at + 1) == seen->tail);
        m_messages = *next;
    }

    void regenerate()
    {
        const auto next = regenerated(m_messages);
        const bool hasTurn = std::ranges::any_of(m_messages, [](const ChatMessage &message) {
            return message.role == ChatMessage::Role::User;
        });
        RC_ASSERT(next.has_value() == hasTurn);
        if (!next)
            return;
        const qsizetype kept = next->size() - 1;
        RC_ASSERT(next->first(kept) == m_messages.first(kept));
        RC_ASSERT(next->at(kept - 1).role == ChatMessage::Role::User);
        RC_ASSERT(next->last().parts.isEmpty());
        m_messages = *next;
        run();
    }

    void continueGeneration()
    {
        const auto next = continued(m_messages, QStringLiteral("Continue"));
        const bool can =
            !m_messages.isEmpty() && m_messages.last().role == ChatMessage::Role::Assistant;
        RC_ASSERT(next.has_value() == can);
        if (!next)
            return;
        RC_ASSERT(next->first(m_messages.size()) == m_messages);
        m_messages = *next;
        run();
    }

    /// What a run makes of the placeholder at the end.
    void run()
    {
        const auto end = *rc::gen::weightedElement<End>({{6, End::Finished},
                                                         {2, End::Stopped},
                                                         {1, End::StoppedAtOnce},
                                                         {2, End::FailedAtOnce},
                                                         {2, End::FailedLater},
                                                         {1, End::SessionExpired}});
        if (end == End::Finished || end == End::Stopped || end == End::FailedLater)
            applyEvent(event::TextDelta{words()}, m_messages.last());
        if (end == End::Stopped || end == End::StoppedAtOnce)
            appendStoppedNote(m_messages.last());
        if (end == End::FailedAtOnce)
            m_messages.removeLast();
        if (end == End::SessionExpired)
            m_messages.remove(m_messages.size() - 2, 2);
    }

    /// Of the versions of a turn, a change touches none but the one that is left.
    static void checkOthersUntouched(const ChatMessage &before, const ChatMessage &after)
    {
        if (!before.branches)
            return;
        for (int index = 0; index < before.branches->size(); ++index) {
            if (index != before.activeBranchIndex)
                RC_ASSERT(before.branches->at(index) == after.branches->at(index));
        }
    }

    void leave(qsizetype at)
    {
        const ChatMessage &turn = m_messages[at];
        m_left[{turn.id, turn.activeBranchIndex}] = {{}, turn.parts, m_messages.sliced(at + 1)};
    }

    [[nodiscard]] bool isTurn(qsizetype at) const
    {
        return m_messages[at].role == ChatMessage::Role::User;
    }
    [[nodiscard]] qsizetype anyPosition() const
    {
        return m_messages.isEmpty() ? -1 : *rc::gen::inRange<qsizetype>(0, m_messages.size());
    }

    QList<ChatMessage> m_messages;
    QHash<Version, ChatBranch> m_left;
    MessageListModel m_model;
    QAbstractItemModelTester m_tester{&m_model,
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

RC_GTEST_PROP(BranchingProperty, holdsItsInvariantsUnderAnyCommands, ())
{
    const auto steps = *rc::gen::container<std::vector<Step>>(
        rc::gen::weightedElement<Step>({{3, Step::Send},
                                        {4, Step::Edit},
                                        {6, Step::Switch},
                                        {2, Step::Regenerate},
                                        {2, Step::Continue}}));
    Conversation conversation;
    for (const Step step : steps)
        conversation.take(step);
}
