// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/optional.h"
#include "service/apiclient.h"
#include "service/recordlist.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <optional>
#include <type_traits>

namespace velto::service
{

/// What the feature stores have in common: the client, whether a load is running, the two texts in
/// which a failure shows, and the two shapes that nearly all their operations have. A store never
/// reports to a screen in another way. Main thread.
///
/// Operations are coroutines that may outlive the store: their answers are then dropped. Each has a
/// `start...` form for screens, which begin them and don't wait. Nothing keeps two of them from
/// running at once; the later answer wins, and the first load to end turns `isLoading` off.
class FeatureStore : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged FINAL)
    /// Why the last load failed; empty when it did not.
    Q_PROPERTY(QString loadError READ loadErrorText NOTIFY loadErrorChanged FINAL)
    /// Why the last change failed; empty when it did not.
    Q_PROPERTY(QString actionError READ actionErrorText NOTIFY actionErrorChanged FINAL)

public:
    /// `api` outlives the store.
    explicit FeatureStore(APIClient &api, QObject *parent = nullptr);

    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] const std::optional<QString> &loadError() const { return m_loadError; }
    [[nodiscard]] const std::optional<QString> &actionError() const { return m_actionError; }

    /// Forgets what was loaded, as after a sign-out. A load that is under way goes on.
    virtual void reset();

signals:
    void isLoadingChanged();
    void loadErrorChanged();
    void actionErrorChanged();

protected:
    template<typename T>
    using Reply = QCoro::Task<base::Result<T>>;
    using Work = std::function<Reply<void>()>;

    /// Something to ask the service for, and what becomes of the answer.
    template<typename T>
    struct Source
    {
        std::function<Reply<T>(std::stop_token)> request;
        std::function<void(T)> keep;
    };

    template<typename T>
    [[nodiscard]] Source<T> get(QString path, std::function<void(T)> keep)
    {
        return {[this, path](std::stop_token stop) { return api().read<T>("GET", path, {}, stop); },
                std::move(keep)};
    }
    /// The answer becomes the value of a field.
    template<typename Store, typename T>
    [[nodiscard]] Source<T> get(QString path, base::Optional<T> &field, void (Store::*changed)())
    {
        const auto keep = [this, &field, changed](T answer) {
            assign(field, std::move(answer), changed);
        };
        return get<T>(std::move(path), std::function<void(T)>(keep));
    }
    /// The answer is a list.
    template<typename T, auto Key>
    [[nodiscard]] Source<QList<T>> get(QString path, RecordList<T, Key> &list)
    {
        const auto keep = [&list](QList<T> answer) { list.assign(std::move(answer)); };
        return get<QList<T>>(std::move(path), std::function<void(QList<T>)>(keep));
    }
    /// The answer is an object around a list.
    template<typename T, auto Key, typename Answer>
    [[nodiscard]] Source<Answer> get(QString path, RecordList<T, Key> &list,
                                     QList<T> Answer::*records)
    {
        const auto keep = [&list, records](Answer answer) {
            list.assign(std::move(answer.*records));
        };
        return get<Answer>(std::move(path), std::function<void(Answer)>(keep));
    }

    /// The shape of a load: `isLoading` goes up, `loadError` is cleared, what `work` brings
    /// replaces what was there, or else its failure is reported, and `isLoading` goes down.
    QCoro::Task<void> load(Work work);
    template<typename T>
    QCoro::Task<void> load(Source<T> source)
    {
        return load([this, source] { return fetch(source); });
    }
    /// Both are asked for at once and kept in this order. When the first fails, the second is
    /// cancelled.
    template<typename A, typename B>
    QCoro::Task<void> load(Source<A> first, Source<B> second)
    {
        return load([this, first, second] { return fetchBoth(first, second); });
    }

    /// The shape of a change: `actionError` is cleared, and set if `work` fails, which gives false.
    QCoro::Task<bool> change(Work work);
    /// Nothing is changed here until the service says so: what the change touched is fetched again.
    template<typename T>
    QCoro::Task<bool> change(Work send, Source<T> touched)
    {
        return change([this, send, touched] { return sendThenFetch(send, touched); });
    }

    template<typename T>
    Reply<void> fetch(Source<T> source);

    /// Sets `field` and emits `changed`, unless that is its value already.
    template<typename Store, typename T>
    void assign(T &field, std::type_identity_t<T> value, void (Store::*changed)())
    {
        if (field == value)
            return;
        field = std::move(value);
        emit(static_cast<Store *>(this)->*changed)();
    }

    [[nodiscard]] APIClient &api() const { return m_api; }
    void setLoading(bool loading);
    void setLoadError(std::optional<QString> error);
    void setActionError(std::optional<QString> error);

private:
    template<typename A, typename B>
    Reply<void> fetchBoth(Source<A> first, Source<B> second);
    template<typename T>
    Reply<void> sendThenFetch(Work send, Source<T> touched);

    [[nodiscard]] QString loadErrorText() const { return m_loadError.value_or(QString()); }
    [[nodiscard]] QString actionErrorText() const { return m_actionError.value_or(QString()); }

    APIClient &m_api;
    bool m_isLoading = false;
    std::optional<QString> m_loadError;
    std::optional<QString> m_actionError;
};

template<typename T>
FeatureStore::Reply<void> FeatureStore::fetch(Source<T> source)
{
    const QPointer<FeatureStore> self(this);
    auto answer = co_await source.request({});
    if (!answer)
        co_return tl::unexpected(answer.error());
    if (self)
        source.keep(std::move(*answer));
    co_return base::Result<void>{};
}

template<typename A, typename B>
FeatureStore::Reply<void> FeatureStore::fetchBoth(Source<A> first, Source<B> second)
{
    const QPointer<FeatureStore> self(this);
    std::stop_source givenUp;
    Reply<A> firstReply = first.request({});
    Reply<B> secondReply = second.request(givenUp.get_token());
    auto one = co_await std::move(firstReply);
    if (!one)
        givenUp.request_stop();
    else if (self)
        first.keep(std::move(*one));
    auto two = co_await std::move(secondReply);
    if (!one)
        co_return tl::unexpected(one.error());
    if (!two)
        co_return tl::unexpected(two.error());
    if (self)
        second.keep(std::move(*two));
    co_return base::Result<void>{};
}

template<typename T>
FeatureStore::Reply<void> FeatureStore::sendThenFetch(Work send, Source<T> touched)
{
    const QPointer<FeatureStore> self(this);
    const auto sent = co_await send();
    if (!sent)
        co_return sent;
    if (!self)
        co_return base::Result<void>{};
    co_return co_await fetch(std::move(touched));
}

} // namespace velto::service
