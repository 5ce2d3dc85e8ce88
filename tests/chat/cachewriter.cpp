// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "chat/conversationcache.h"

#include <QElapsedTimer>

#include <cstdio>

/// Writes two conversations of different length to the file argv[1], in turn and for ever, and says
/// how many nanoseconds a round took once both have stood. Either takes long enough to write that
/// the file holds each of them for a good part of a round.
int main(int argc, char **argv)
{
    using namespace velto::chat;
    if (argc != 2)
        return 2;
    const QString file = QString::fromLocal8Bit(argv[1]);
    const auto conversation = [](int messages, char16_t fill) {
        QList<ChatMessage> list;
        for (int i = 0; i < messages; ++i)
            list.append(newMessage(ChatMessage::Role::User, {textPart(QString(2000, fill))}));
        return list;
    };
    const QList<ChatMessage> shorter = conversation(100, u'a');
    const QList<ChatMessage> longer = conversation(200, u'b');
    QElapsedTimer round;
    round.start();
    conversationcache::save(longer, QStringLiteral("longer"), file);
    conversationcache::save(shorter, QStringLiteral("shorter"), file);
    std::printf("%lld\n", static_cast<long long>(round.nsecsElapsed()));
    std::fflush(stdout);
    while (true) {
        conversationcache::save(longer, QStringLiteral("longer"), file);
        conversationcache::save(shorter, QStringLiteral("shorter"), file);
    }
}
