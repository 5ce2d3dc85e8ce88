// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "imagedata.h"

namespace velto::app
{
namespace
{

QCoro::Task<base::Result<markdown::ImageResponse>> fetch(service::Transport *transport,
                                                         service::ImageFetchLimits limits, QUrl url,
                                                         std::stop_token stop)
{
    base::Result<service::HTTPResponse> response =
        co_await service::fetchImage(*transport, url, limits, stop);
    if (!response)
        co_return tl::unexpected(response.error());
    co_return markdown::ImageResponse{response->head.status, response->body,
                                      !service::forbidsStoring(response->head)};
}

} // namespace

markdown::ImageData imageData(service::Transport &transport, service::ImageFetchLimits limits)
{
    return [transport = &transport, limits](QUrl url, std::stop_token stop) {
        return fetch(transport, limits, url, stop);
    };
}

} // namespace velto::app
