// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/networkimagemodel.h"

#include <QImage>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>

namespace velto::markdown
{

/// A remote image in a window. What shows depends on how far its load has come: `placeholder` at
/// first, `success` (if there is none, the picture itself) or `failure`.
///
/// Its implicit size is that of the picture in device-independent pixels; narrower than that, the
/// implicit height keeps the picture's proportion. Loads only while it is visible in a window, and
/// ends its request when it is not.
class NetworkImage : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY sourceChanged FINAL)
    /// Pixels of the picture in one device-independent pixel.
    Q_PROPERTY(qreal imageScale READ imageScale WRITE setImageScale NOTIFY sourceChanged FINAL)
    /// What assistive technology is told; without it the picture is decoration.
    Q_PROPERTY(QString alt READ alt WRITE setAlt NOTIFY altChanged FINAL)
    /// Unless set, that of the engine: see NetworkImageLoaderKey.
    Q_PROPERTY(velto::markdown::NetworkImageLoader *imageLoader READ imageLoader WRITE
                   setImageLoader NOTIFY imageLoaderChanged FINAL)
    /// Milliseconds in which new content appears; 0 is at once.
    Q_PROPERTY(
        int transaction READ transaction WRITE setTransaction NOTIFY transactionChanged FINAL)
    Q_PROPERTY(QQmlComponent *placeholder MEMBER m_placeholder NOTIFY contentChanged FINAL)
    Q_PROPERTY(QQmlComponent *success MEMBER m_success NOTIFY contentChanged FINAL)
    Q_PROPERTY(QQmlComponent *failure MEMBER m_failure NOTIFY contentChanged FINAL)
    Q_PROPERTY(Status status READ status NOTIFY imageChanged FINAL)
    Q_PROPERTY(QImage image READ image NOTIFY imageChanged FINAL)
    Q_PROPERTY(QSizeF idealSize READ idealSize NOTIFY imageChanged FINAL)

public:
    enum class Status { Empty, Success, Failure };
    Q_ENUM(Status)

    explicit NetworkImage(QQuickItem *parent = nullptr);
    ~NetworkImage() override;

    [[nodiscard]] const NetworkImageModel &model() const { return m_model; }
    [[nodiscard]] const std::optional<ImageSource> &source() const { return m_source; }
    void setSource(const std::optional<ImageSource> &source);

    [[nodiscard]] QUrl url() const;
    void setUrl(const QUrl &url);
    [[nodiscard]] qreal imageScale() const { return m_imageScale; }
    void setImageScale(qreal scale);
    [[nodiscard]] QString alt() const { return m_alt; }
    void setAlt(const QString &alt);
    [[nodiscard]] NetworkImageLoader *imageLoader() const { return m_model.imageLoader(); }
    void setImageLoader(NetworkImageLoader *loader);
    [[nodiscard]] int transaction() const;
    void setTransaction(int milliseconds);

    [[nodiscard]] Status status() const;
    [[nodiscard]] QImage image() const;
    [[nodiscard]] QSizeF idealSize() const;

signals:
    void sourceChanged();
    void altChanged();
    void imageLoaderChanged();
    void transactionChanged();
    void contentChanged();
    void imageChanged();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;

private:
    void start();
    void describe();
    void showContent();
    [[nodiscard]] QQuickItem *makeContent();
    [[nodiscard]] QQuickItem *make(QQmlComponent *component);
    void measure();

    NetworkImageModel m_model;
    std::optional<ImageSource> m_source;
    qreal m_imageScale = 1;
    QString m_alt;
    QQmlComponent *m_placeholder = nullptr;
    QQmlComponent *m_success = nullptr;
    QQmlComponent *m_failure = nullptr;
    QPointer<QQuickItem> m_content;
};

} // namespace velto::markdown
