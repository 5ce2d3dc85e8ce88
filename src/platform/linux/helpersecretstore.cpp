// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "platform/linux/helpersecretstore.h"

#include "base/log.h"
#include "platform/linux/childprocess.h"
#include "platform/secretmessage.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>

#include <array>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velto::platform
{

/// Stays set once it is, and wakes whoever waits for it.
class HelperSecretStore::Abandonment final
{
public:
    Abandonment()
        : m_event(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {}
    ~Abandonment() { close(m_event); }
    Q_DISABLE_COPY_MOVE(Abandonment)

    void set() const { eventfd_write(m_event, 1); }
    /// Also when there was no descriptor left for it: a call that can't be ended must not begin.
    [[nodiscard]] bool isSet() const
    {
        pollfd event{m_event, POLLIN, 0};
        return m_event < 0 || poll(&event, 1, 0) > 0;
    }
    /// Becomes readable.
    [[nodiscard]] int event() const { return m_event; }

private:
    int m_event;
};

namespace
{

using base::KeychainError;
using base::Result;
using Abandonment = HelperSecretStore::Abandonment;
using Operation = SecretRequest::Operation;

/// For a helper that has answered, or was told to give up.
constexpr std::chrono::seconds patience{1};

void log(const QString &text)
{
    base::logLine(QLatin1StringView("SecretStore"), text);
}

tl::unexpected<base::Failure> unknownFailure()
{
    return base::fail(KeychainError{KeychainError::Unknown});
}

/// Sends the request and collects what comes back until the helper closes its end.
class Conversation final
{
public:
    Conversation(int channel, const Abandonment &abandonment, QByteArrayView request)
        : m_channel(channel)
        , m_abandonment(abandonment)
        , m_unsent(request)
    {}

    [[nodiscard]] QByteArray run();

private:
    [[nodiscard]] bool wait();
    void send();
    [[nodiscard]] bool receive();
    void finish();

    int m_channel;
    const Abandonment &m_abandonment;
    QByteArrayView m_unsent;
    QByteArray m_received;
    bool m_isFinishing = false;
    QDeadlineTimer m_deadline{QDeadlineTimer::Forever};
};

QByteArray Conversation::run()
{
    while (wait()) {
        if (!m_unsent.isEmpty())
            send();
        if (!receive())
            break;
        if (messageState(m_received) != MessageState::Incomplete)
            finish();
    }
    return m_received;
}

/// False when the time is over.
bool Conversation::wait()
{
    const short wanted = m_unsent.isEmpty() ? POLLIN : POLLIN | POLLOUT;
    std::array<pollfd, 2> files{{{m_channel, wanted, 0}, {m_abandonment.event(), POLLIN, 0}}};
    const nfds_t count = m_isFinishing ? 1 : files.size(); // what is known must not wake us again
    if (poll(files.data(), count, static_cast<int>(m_deadline.remainingTime())) < 0)
        return errno == EINTR;
    if (files[1].revents != 0)
        finish();
    return !m_deadline.hasExpired();
}

void Conversation::send()
{
    const auto size = static_cast<std::size_t>(m_unsent.size());
    const ssize_t sent = ::send(m_channel, m_unsent.data(), size, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent >= 0)
        m_unsent = m_unsent.sliced(sent);
    else if (errno != EAGAIN && errno != EINTR)
        m_unsent = {}; // it doesn't listen, but may have said why
}

/// False when there is nothing more to come, or nothing that would be of use.
bool Conversation::receive()
{
    std::array<char, 4096> buffer{};
    const ssize_t size = recv(m_channel, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (size < 0)
        return errno == EAGAIN || errno == EINTR;
    m_received.append(buffer.data(), size);
    return size > 0 && messageState(m_received) != MessageState::Broken;
}

/// Closes the helper's input.
void Conversation::finish()
{
    if (m_isFinishing)
        return;
    m_isFinishing = true;
    m_unsent = {};
    m_deadline.setRemainingTime(patience);
    shutdown(m_channel, SHUT_WR);
}

QString troubleWith(QByteArrayView received, const QString &ending)
{
    if (messageState(received) != MessageState::Incomplete)
        return QStringLiteral("gave an answer that can't be read");
    if (received.isEmpty())
        return QStringLiteral("ended without an answer (%1)").arg(ending);
    return QStringLiteral("ended in the middle of its answer (%1)").arg(ending);
}

/// Touches nothing of the store that was called, which may be gone meanwhile.
Result<std::optional<QString>> ask(const QString program,
                                   const std::shared_ptr<const Abandonment> abandonment,
                                   const SecretRequest &request)
{
    if (abandonment->isSet())
        return base::fail(KeychainError{KeychainError::NoService});
    const std::optional<QByteArray> message = messageOf(request);
    if (!message) {
        log(QStringLiteral("a secret is too long to be kept"));
        return unknownFailure();
    }
    ChildProcess helper(program);
    if (helper.error() != 0) {
        log(QStringLiteral("%1 could not be started: %2")
                .arg(program, qt_error_string(helper.error())));
        return unknownFailure();
    }
    const QByteArray received = Conversation(helper.channel(), *abandonment, *message).run();
    const QString ending = helper.end();
    const std::optional<SecretReply> reply = secretReply(received);
    if (!reply) {
        log(QStringLiteral("%1 %2").arg(program, troubleWith(received, ending)));
        return unknownFailure();
    }
    if (reply->status != 0)
        return base::fail(KeychainError{reply->status});
    return reply->value;
}

Result<void> withoutValue(const Result<std::optional<QString>> &result)
{
    if (!result)
        return tl::unexpected(result.error());
    return {};
}

} // namespace

HelperSecretStore::HelperSecretStore(QString program)
    : m_program(std::move(program))
    , m_abandonment(std::make_shared<Abandonment>())
{}

Result<void> HelperSecretStore::save(const QString &service, const QString &account,
                                     const QString &value)
{
    return withoutValue(ask(m_program, m_abandonment, {Operation::Save, service, account, value}));
}

Result<std::optional<QString>> HelperSecretStore::load(const QString &service,
                                                       const QString &account)
{
    return ask(m_program, m_abandonment, {Operation::Load, service, account, {}});
}

Result<void> HelperSecretStore::remove(const QString &service, const QString &account)
{
    return withoutValue(ask(m_program, m_abandonment, {Operation::Remove, service, account, {}}));
}

void HelperSecretStore::abandon()
{
    m_abandonment->set();
}

QString keyringHelper(const QString &folder)
{
    const QString name = QStringLiteral("/velto-keyring");
    const QFileInfo beside(folder + name);
    if (beside.isFile() && beside.isExecutable())
        return beside.filePath();
    return QDir::cleanPath(folder + u'/' + QStringLiteral(VELTO_HELPERS_FROM_PROGRAMS) + name);
}

std::unique_ptr<SecretStore> makeSystemSecretStore()
{
    return std::make_unique<HelperSecretStore>(
        keyringHelper(QCoreApplication::applicationDirPath()));
}

} // namespace velto::platform
