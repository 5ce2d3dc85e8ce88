// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "agent/marketplacerecords.h"
#include "service/featurestore.h"

#include <QSet>
#include <QStringList>

namespace velto::agent
{

/// The bundles that can be installed for the agent. Several may be in the works at once.
class MarketplaceStore final : public service::FeatureStore
{
    Q_OBJECT
    Q_PROPERTY(velto::service::RecordListModel *items READ items CONSTANT FINAL)
    /// The ids of the bundles that are being installed or uninstalled, sorted.
    Q_PROPERTY(QStringList busy READ busyIds NOTIFY busyChanged FINAL)

public:
    using Items = service::RecordList<MarketplaceItem, &MarketplaceItem::id>;

    explicit MarketplaceStore(service::APIClient &api, QObject *parent = nullptr);
    ~MarketplaceStore() override;

    [[nodiscard]] Items *items() { return &m_items; }
    [[nodiscard]] const QSet<QString> &busy() const { return m_busy; }
    [[nodiscard]] QStringList busyIds() const;

    QCoro::Task<void> load();
    // Changes give whether they succeeded.
    QCoro::Task<bool> install(QString id);
    QCoro::Task<bool> uninstall(QString id);
    void reset() override;

    Q_INVOKABLE void startLoad() { load(); }
    Q_INVOKABLE void startInstall(const QString &id) { install(id); }
    Q_INVOKABLE void startUninstall(const QString &id) { uninstall(id); }

signals:
    void busyChanged();

private:
    [[nodiscard]] Source catalog();
    /// Changes the bundle by `send` and reads the catalog again, with the id in `busy` meanwhile.
    QCoro::Task<bool> changeBundle(QString id, Work send);
    void setBusy(QSet<QString> busy);

    Items m_items;
    QSet<QString> m_busy;
};

} // namespace velto::agent
