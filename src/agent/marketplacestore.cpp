// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "agent/marketplacestore.h"

#include <QPointer>

namespace velto::agent
{

MarketplaceStore::MarketplaceStore(service::APIClient &api, QObject *parent)
    : FeatureStore(api, parent)
{}

MarketplaceStore::~MarketplaceStore() = default;

MarketplaceStore::Source MarketplaceStore::catalog()
{
    return get(QStringLiteral("/v1/marketplace/catalog"), m_items, &MarketplaceCatalog::entries);
}

QCoro::Task<void> MarketplaceStore::load()
{
    return FeatureStore::load(catalog());
}

QCoro::Task<bool> MarketplaceStore::install(QString id)
{
    return changeBundle(id, [this, id] { return api().installBundle(id); });
}

QCoro::Task<bool> MarketplaceStore::uninstall(QString id)
{
    return changeBundle(id, [this, id] { return api().uninstallBundle(id); });
}

QCoro::Task<bool> MarketplaceStore::changeBundle(QString id, Work send)
{
    const QPointer<MarketplaceStore> self(this);
    const Work markAndSend = [this, id, send] {
        setBusy(m_busy + QSet{id});
        return send();
    };
    const bool done = co_await change(markAndSend, catalog());
    if (self)
        setBusy(m_busy - QSet{id});
    co_return done;
}

void MarketplaceStore::reset()
{
    FeatureStore::reset();
    m_items.assign({});
    setBusy({});
}

QStringList MarketplaceStore::busyIds() const
{
    QStringList ids(m_busy.begin(), m_busy.end());
    ids.sort();
    return ids;
}

void MarketplaceStore::setBusy(QSet<QString> busy)
{
    assign(m_busy, std::move(busy), &MarketplaceStore::busyChanged);
}

} // namespace velto::agent
