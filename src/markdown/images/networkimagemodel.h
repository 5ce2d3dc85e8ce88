// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/imagesource.h"
#include "markdown/images/networkimageloader.h"
#include "markdown/images/networkimagestate.h"

#include <QObject>
#include <QPointer>

#include <chrono>
#include <optional>
#include <stop_token>

namespace velto::markdown
{

/// One place where a remote image is to show, and how far its load has come. Main thread.
///
/// While a new source loads, and when the source goes, the image stays as it was.
class NetworkImageModel final : public QObject
{
    Q_OBJECT

public:
    explicit NetworkImageModel(QObject *parent = nullptr);
    /// Ends a load that is still running.
    ~NetworkImageModel() override;

    [[nodiscard]] const std::optional<ImageSource> &source() const { return m_source; }
    /// Ends the load of the former source. An equal source changes nothing, not even after a
    /// failure.
    void setSource(const std::optional<ImageSource> &source);

    [[nodiscard]] const NetworkImageState &image() const { return m_image; }

    /// How long views take to get from one image to the next; zero is at once.
    [[nodiscard]] std::chrono::milliseconds transaction() const { return m_transaction; }
    void setTransaction(std::chrono::milliseconds transaction);

    [[nodiscard]] NetworkImageLoader *imageLoader() const { return m_imageLoader; }
    void setImageLoader(NetworkImageLoader *loader);

    /// Whether anybody is looking. A load ends when nobody is, and begins again when somebody is.
    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setShown(bool isShown);

signals:
    void sourceChanged();
    void imageChanged();
    void transactionChanged();
    void imageLoaderChanged();

private:
    void load();
    void cancel();
    void finish(const ImageSource &source, const base::Result<QImage> &loaded);
    static QCoro::Task<void> run(QPointer<NetworkImageModel> self, NetworkImageLoader *loader,
                                 ImageSource source, std::stop_token stop);

    std::optional<ImageSource> m_source;
    NetworkImageState m_image;
    std::chrono::milliseconds m_transaction{0};
    QPointer<NetworkImageLoader> m_imageLoader;
    std::stop_source m_loading;
    bool m_isShown = true;
    bool m_isSettled = true; ///< The source's load has ended in success or failure.
};

} // namespace velto::markdown
