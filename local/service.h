// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "local/company/roles.h"
#include "local/http/route.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velto::local
{

struct ServiceOptions
{
    /// Holds the database; made when it is missing.
    std::filesystem::path dataFolder;
    /// 0 lets the system choose.
    int port = 7717;
    std::int64_t accessTokenSeconds = 900;
    /// Deltas per second of the demonstration agent; 0 is as fast as the client reads.
    int tokenRate = 80;
    /// Unix seconds; the system's time when it is empty.
    std::function<std::int64_t()> clock;
    /// Takes one line for each request; nothing is logged when it is empty.
    std::function<void(const std::string &)> log;
    /// Who signs in: the one with this role in the first workspace.
    Role signInAs = Role::Owner;
    /// Begins with fresh data.
    bool reset = false;
};

/// The whole service in one object: `start` it, and it answers until it is stopped.
class Service final
{
public:
    explicit Service(ServiceOptions options);
    ~Service();
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    /// Opens the data and the port and serves from threads of its own. On failure false, with a
    /// sentence for a person in `error`.
    [[nodiscard]] bool start(std::string &error);
    /// Ends open streams, keeps what they have sent, and returns when no thread is left.
    void stop();

    [[nodiscard]] int port() const;
    [[nodiscard]] const std::vector<Route> &routes() const;

private:
    struct Parts;

    ServiceOptions m_options;
    std::unique_ptr<Parts> m_parts;
};

} // namespace velto::local
