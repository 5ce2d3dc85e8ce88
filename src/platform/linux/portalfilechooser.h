// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/oneshot.h"
#include "platform/filechooser.h"

#include <QObject>
#include <QVariantMap>

#include <chrono>
#include <optional>

class QDBusMessage;

namespace velto::platform
{

/// Asks the desktop's portal for its file dialog. The portal answers a request at once with the
/// name of an object, and says there what has been chosen once that is known.
class PortalFileChooser final : public QObject, public FileChooser
{
    Q_OBJECT

public:
    /// A portal that hasn't taken the request after `patience` counts as absent.
    explicit PortalFileChooser(std::chrono::milliseconds patience = std::chrono::seconds(10));
    ~PortalFileChooser() override;

    [[nodiscard]] QCoro::Task<Choice> chooseFile(QString title, quintptr window) override;

private slots:
    void answered(uint response, const QVariantMap &results);

private:
    void follow(const QString &request);
    void call(const QString &title, quintptr window, const QString &token);
    void withdraw() const;
    void finish(const Choice &choice);

    std::chrono::milliseconds m_patience;
    QString m_request; ///< The object that will answer; empty while no dialog is open.
    std::optional<base::OneShot<Choice>> m_choice;
};

/// How a portal names a window of ours: "x11:2a", or nothing where windows can't be named.
[[nodiscard]] QString portalWindow(const QString &windowSystem, quintptr window);

} // namespace velto::platform
