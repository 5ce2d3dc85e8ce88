// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/images/networkimageloader.h"

#include <QQmlEngine>

/// The loader under its QML name. Loading itself knows nothing of QML.
namespace velto::markdown
{

struct NetworkImageLoaderType
{
    Q_GADGET
    QML_FOREIGN(velto::markdown::NetworkImageLoader)
    QML_NAMED_ELEMENT(NetworkImageLoader)
    QML_UNCREATABLE("The program makes the loader.")
};

} // namespace velto::markdown
