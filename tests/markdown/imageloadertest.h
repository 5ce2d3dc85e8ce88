// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/imagedata.h"
#include "markdown/images/defaultnetworkimagecache.h"
#include "markdown/images/defaultnetworkimageloader.h"
#include "pictures.h"
#include "service/transport.h"
#include "support/coroutinetest.h"
#include "support/scriptedserver.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace velto::markdown
{

using Kind = base::TransportError::Kind;

[[nodiscard]] inline std::optional<Kind> kindOf(const base::Result<QImage> &result)
{
    if (result)
        return std::nullopt;
    const auto *error = std::get_if<base::TransportError>(&result.error());
    return error != nullptr ? std::optional(error->kind) : std::nullopt;
}

/// A loader over the real transport, and the server that it asks.
class ImageLoaderTest : public testing::Test
{
protected:
    ImageLoaderTest() { restart(); }

    /// A loader that remembers no more than is on disk.
    void restart(const DefaultNetworkImageLoader::Settings &settings, qsizetype countLimit = 100,
                 service::ImageFetchLimits limits = {})
    {
        m_loader.reset();
        m_cache = std::make_unique<DefaultNetworkImageCache>(countLimit);
        m_loader = std::make_unique<DefaultNetworkImageLoader>(app::imageData(m_transport, limits),
                                                               *m_cache, settings);
    }
    void restart() { restart(DefaultNetworkImageLoader::Settings()); }
    [[nodiscard]] DefaultNetworkImageLoader::Settings onDisk() const
    {
        return {.files = {.directory = m_folder.path()}};
    }

    [[nodiscard]] base::Result<QImage> load(const QString &path)
    {
        return test::await(m_loader->image(m_server.url(path)));
    }
    void answerWith(const QByteArray &bytes, int status = 200, const test::HeaderList &headers = {})
    {
        m_server.on("/picture", test::answer(status, bytes, headers));
    }
    /// Answers nothing until the test does.
    void hold()
    {
        m_server.on("/picture", [this](const test::RecordedRequest &, const test::Exchange &held) {
            m_held.append(held);
        });
    }
    [[nodiscard]] bool isHolding(qsizetype count)
    {
        return test::waitUntil([this, count] { return m_held.size() == count; });
    }
    [[nodiscard]] bool isClosed(qsizetype index)
    {
        return test::waitUntil([this, index] { return !m_held[index].isOpen(); });
    }
    [[nodiscard]] qsizetype requests() const { return m_server.count("/picture"); }

    const QString m_path = QStringLiteral("/picture");
    QTemporaryDir m_folder;
    test::ScriptedServer m_server;
    service::Transport m_transport;
    QList<test::Exchange> m_held;
    std::unique_ptr<DefaultNetworkImageCache> m_cache;
    std::unique_ptr<DefaultNetworkImageLoader> m_loader;
};

} // namespace velto::markdown
