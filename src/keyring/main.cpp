// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "keyring/libsecretstore.h"
#include "platform/secretmessage.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace velto::keyring
{
namespace
{

using base::KeychainError;
using platform::MessageState;
using platform::SecretReply;
using platform::SecretRequest;

constexpr std::chrono::seconds patience{1};

/// What came in, empty at the end of the input and when it can't be read.
QByteArrayView readSome(std::array<char, 4096> &buffer)
{
    ssize_t size = 0;
    do {
        size = read(STDIN_FILENO, buffer.data(), buffer.size());
    } while (size < 0 && errno == EINTR);
    return {buffer.data(), qMax<qsizetype>(size, 0)};
}

std::optional<SecretRequest> readRequest()
{
    QByteArray message;
    std::array<char, 4096> buffer{};
    while (platform::messageState(message) == MessageState::Incomplete) {
        const QByteArrayView piece = readSome(buffer);
        if (piece.isEmpty())
            return std::nullopt;
        message.append(piece);
    }
    return platform::secretRequest(message);
}

bool write(QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t size = ::write(STDOUT_FILENO, bytes.data(), bytes.size());
        if (size < 0 && errno != EINTR)
            return false;
        bytes = bytes.sliced(qMax<qsizetype>(size, 0));
    }
    return true;
}

/// Waits for the end of the input, which is how the client says, or shows, that it is gone.
void endWithClient(const std::shared_ptr<LibsecretStore> &store)
{
    std::array<char, 4096> buffer{};
    while (!readSome(buffer).isEmpty()) {
    }
    store->abandon();
    // A library below may miss the news.
    std::this_thread::sleep_for(patience);
    std::_Exit(EXIT_FAILURE);
}

SecretReply failed(const base::Failure &failure)
{
    const auto *error = std::get_if<KeychainError>(&failure);
    return {.status = error ? error->status : KeychainError::Unknown, .value = {}};
}

SecretReply replyTo(const SecretRequest &request, LibsecretStore &store)
{
    switch (request.operation) {
    case SecretRequest::Operation::Save: {
        const auto saved = store.save(request.service, request.account, request.value);
        return saved ? SecretReply() : failed(saved.error());
    }
    case SecretRequest::Operation::Load: {
        const auto loaded = store.load(request.service, request.account);
        return loaded ? SecretReply{.status = 0, .value = *loaded} : failed(loaded.error());
    }
    case SecretRequest::Operation::Remove: {
        const auto removed = store.remove(request.service, request.account);
        return removed ? SecretReply() : failed(removed.error());
    }
    }
    return failed(KeychainError{KeychainError::Unknown});
}

int run()
{
    const std::optional<SecretRequest> request = readRequest();
    if (!request)
        return EXIT_FAILURE;
    const auto store = std::make_shared<LibsecretStore>();
    std::thread([store] { endWithClient(store); }).detach();
    std::optional<QByteArray> message = platform::messageOf(replyTo(*request, *store));
    // An entry that somebody else has written may be longer than a message.
    if (!message)
        message = platform::messageOf(failed(KeychainError{KeychainError::Unknown}));
    return message && write(*message) ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace velto::keyring

int main()
{
    // What passes through here is to be in no core file, nor in sight of the user's other programs.
    prctl(PR_SET_DUMPABLE, 0);
    // Nobody reading any more is an error of writing, not a crash.
    std::signal(SIGPIPE, SIG_IGN);
    return velto::keyring::run();
}
