// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/instance.h"

#include <QVariantMap>

#include <chrono>
#include <future>

namespace velto::platform
{

/// What the desktop calls on the program that owns the name: the interface of desktop entries that
/// are activated over D-Bus.
class ApplicationObject final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public slots:
    // Spelt as on the bus.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameters,
                                     const QVariantMap &platformData);

signals:
    void launched(const velto::platform::Launch &launch);
    void newChatRequested(const QByteArray &token);
    void quitRequested();
};

/// The name "ltd.orbax.velto" on the session bus, which one program at a time can own.
class BusInstance final : public Instance
{
    Q_OBJECT

public:
    /// How long the one that runs may take to answer a later start.
    explicit BusInstance(std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~BusInstance() override;

    void claim() override;
    [[nodiscard]] Standing standing() override;
    [[nodiscard]] Standing handOver(const Launch &launch) override;
    void release() override;

private slots:
    void nameLost(const QString &name);

private:
    [[nodiscard]] Standing takeName();

    std::chrono::milliseconds m_patience;
    ApplicationObject m_object;
    std::future<Standing> m_claim;
    Standing m_standing = Standing::Sole;
    bool m_released = false;
};

} // namespace velto::platform
