// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

#include <QCoroTask>

#include <QImage>
#include <QObject>
#include <QUrl>

#include <stop_token>

namespace velto::markdown
{

/// Gives the image behind an address. Main thread only; the stop token may be fired anywhere.
class NetworkImageLoader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Fails with `Cancelled` when `stop` fires, or when the loader ends, before there is an
    /// answer.
    [[nodiscard]] virtual QCoro::Task<base::Result<QImage>> image(QUrl url,
                                                                  std::stop_token stop = {}) = 0;
};

} // namespace velto::markdown
