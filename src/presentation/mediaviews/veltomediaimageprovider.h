// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/imageprovider.h"

#include <QQmlComponent>

#include <memory>

namespace velto::presentation
{

/// Shows the pictures of replies as `MediaImageView`, made by the engine of the item they are in.
class VeltoMediaImageProvider final : public markdown::ImageProvider
{
    Q_OBJECT

public:
    using ImageProvider::ImageProvider;

    [[nodiscard]] QQuickItem *makeImage(const QUrl &url, const QString &label,
                                        QQuickItem *parent) override;

private:
    [[nodiscard]] QQmlComponent *component(const QQuickItem &parent);

    std::unique_ptr<QQmlComponent> m_component;
};

} // namespace velto::presentation
