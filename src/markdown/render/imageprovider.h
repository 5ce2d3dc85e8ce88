// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/failure.h"

#include <QCoroTask>

#include <QImage>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

class QQmlEngine;
class QQuickItem;

namespace velto::markdown
{

/// Gives the view of a picture that stands as a block of its own. Main thread.
class ImageProvider : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("an interface")

public:
    using QObject::QObject;

    /// A new item below `parent`, which owns it. It tells its natural size as implicitWidth and
    /// implicitHeight and is never made wider than that, but perhaps narrower; its height follows
    /// its width. Null when there is nothing to show.
    [[nodiscard]] virtual QQuickItem *makeImage(const QUrl &url, const QString &label,
                                                QQuickItem *parent) = 0;
};

/// Gives pictures that stand in a line of text.
class InlineImageProvider
{
public:
    virtual ~InlineImageProvider() = default;
    [[nodiscard]] virtual QCoro::Task<base::Result<QImage>> image(QUrl url, QString label) = 0;
};

} // namespace velto::markdown
