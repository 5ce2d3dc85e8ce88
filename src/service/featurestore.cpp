// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "service/featurestore.h"

#include <QPointer>

namespace velto::service
{

using base::Result;

namespace
{

/// An answer for a store that is gone is dropped.
Result<void> keepUnlessGone(const QPointer<FeatureStore> &store, const Result<QByteArray> &answer,
                            const std::function<Result<void>(const QByteArray &)> &keep)
{
    if (!answer)
        return tl::unexpected(answer.error());
    return store ? keep(*answer) : Result<void>{};
}

} // namespace

FeatureStore::FeatureStore(APIClient &api, QObject *parent)
    : QObject(parent)
    , m_api(api)
{}

void FeatureStore::reset()
{
    setLoadError({});
    setActionError({});
}

FeatureStore::Source FeatureStore::get(QString path, Keep keep)
{
    return {[this, path](std::stop_token stop) {
                return api().send("GET", path, {}, {}, std::move(stop));
            },
            std::move(keep)};
}

QCoro::Task<void> FeatureStore::load(Work work)
{
    const QPointer<FeatureStore> self(this);
    setLoading(true);
    setLoadError({});
    const Result<void> done = co_await work();
    if (!self)
        co_return;
    if (!done)
        setLoadError(base::description(done.error()));
    setLoading(false);
}

QCoro::Task<void> FeatureStore::load(Source source)
{
    return load([this, source] { return fetch(source); });
}

QCoro::Task<void> FeatureStore::load(Source first, Source second)
{
    return load([this, first, second] { return fetchBoth(first, second); });
}

QCoro::Task<bool> FeatureStore::change(Work work)
{
    const QPointer<FeatureStore> self(this);
    setActionError({});
    const Result<void> done = co_await work();
    if (!done && self)
        setActionError(base::description(done.error()));
    co_return done.has_value();
}

QCoro::Task<bool> FeatureStore::change(Work send, Source touched)
{
    const Work fetchAgain = [this, touched] { return fetch(touched); };
    return change([=, this] { return inTurn({send, fetchAgain}); });
}

FeatureStore::Reply<void> FeatureStore::fetch(Source source)
{
    const QPointer<FeatureStore> self(this);
    const Result<QByteArray> answer = co_await source.request({});
    co_return keepUnlessGone(self, answer, source.keep);
}

FeatureStore::Reply<void> FeatureStore::fetchBoth(Source first, Source second)
{
    const QPointer<FeatureStore> self(this);
    std::stop_source givenUp;
    Reply<QByteArray> firstReply = first.request({});
    Reply<QByteArray> secondReply = second.request(givenUp.get_token());
    Result<void> kept = keepUnlessGone(self, co_await std::move(firstReply), first.keep);
    if (!kept)
        givenUp.request_stop();
    const Result<QByteArray> answer = co_await std::move(secondReply);
    co_return kept ? keepUnlessGone(self, answer, second.keep) : kept;
}

FeatureStore::Reply<void> FeatureStore::inTurn(QList<Work> steps)
{
    const QPointer<FeatureStore> self(this);
    for (const Work &step : std::as_const(steps)) {
        const Result<void> done = co_await step();
        if (!done || !self)
            co_return done;
    }
    co_return Result<void>{};
}

void FeatureStore::setLoading(bool loading)
{
    if (std::exchange(m_isLoading, loading) != loading)
        emit isLoadingChanged();
}

void FeatureStore::setLoadError(std::optional<QString> error)
{
    if (std::exchange(m_loadError, error) != error)
        emit loadErrorChanged();
}

void FeatureStore::setActionError(std::optional<QString> error)
{
    if (std::exchange(m_actionError, error) != error)
        emit actionErrorChanged();
}

} // namespace velto::service
