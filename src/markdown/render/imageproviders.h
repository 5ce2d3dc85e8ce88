// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/networkimageloader.h"
#include "markdown/render/imageprovider.h"

#include <QPointer>

#include <functional>

namespace velto::markdown
{

/// Pictures from the network, through the loader.
class DefaultImageProvider : public ImageProvider
{
    Q_OBJECT
    QML_ELEMENT
    /// Without one, that of the QML engine.
    Q_PROPERTY(velto::markdown::NetworkImageLoader *imageLoader READ imageLoader WRITE
                   setImageLoader NOTIFY imageLoaderChanged FINAL)

public:
    using ImageProvider::ImageProvider;

    [[nodiscard]] NetworkImageLoader *imageLoader() const { return m_loader; }
    void setImageLoader(NetworkImageLoader *loader);

    [[nodiscard]] QQuickItem *makeImage(const QUrl &url, const QString &label,
                                        QQuickItem *parent) override;

signals:
    void imageLoaderChanged();

private:
    QPointer<NetworkImageLoader> m_loader;
};

/// Pictures that the program holds itself, by the last part of their path.
class AssetImageProvider final : public ImageProvider
{
    Q_OBJECT

public:
    /// `folder` ends in a slash.
    explicit AssetImageProvider(QString folder, QObject *parent = nullptr);

    [[nodiscard]] QQuickItem *makeImage(const QUrl &url, const QString &label,
                                        QQuickItem *parent) override;

private:
    QString m_folder;
};

/// Any function as a provider.
class AnyImageProvider final : public ImageProvider
{
    Q_OBJECT

public:
    using MakeImage = std::function<QQuickItem *(const QUrl &, const QString &, QQuickItem *)>;

    explicit AnyImageProvider(MakeImage make, QObject *parent = nullptr);

    [[nodiscard]] QQuickItem *makeImage(const QUrl &url, const QString &label,
                                        QQuickItem *parent) override
    {
        return m_make(url, label, parent);
    }

private:
    MakeImage m_make;
};

class DefaultInlineImageProvider final : public InlineImageProvider
{
public:
    explicit DefaultInlineImageProvider(NetworkImageLoader *loader);
    [[nodiscard]] QCoro::Task<base::Result<QImage>> image(QUrl url, QString label) override;

private:
    QPointer<NetworkImageLoader> m_loader;
};

class AssetInlineImageProvider final : public InlineImageProvider
{
public:
    /// `folder` ends in a slash.
    explicit AssetInlineImageProvider(QString folder);
    [[nodiscard]] QCoro::Task<base::Result<QImage>> image(QUrl url, QString label) override;

private:
    QString m_folder;
};

} // namespace velto::markdown
