// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/optional.h"
#include "service/apiclient.h"
#include "service/recordlist.h"

#include <QList>
#include <QObject>

#include <concepts>
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
    /// Takes over the body of an answer, or fails as the decoder does.
    using Keep = std::function<base::Result<void>(const QByteArray &)>;

    /// Something to ask the service for, and what becomes of the answer.
    struct Source
    {
        std::function<Reply<QByteArray>(std::stop_token)> request;
        Keep keep;
    };

    [[nodiscard]] Source get(QString path, Keep keep);
    /// `get` of a path, with `into` the same places.
    [[nodiscard]] Source get(QString path, auto &&...place)
    {
        return get(std::move(path), into(place...));
    }

    /// The answer becomes the value of a field.
    template<typename Store, typename T>
    [[nodiscard]] Keep into(base::Optional<T> &field, void (Store::*changed)())
    {
        return decoded<T>(
            [this, &field, changed](T answer) { assign(field, std::move(answer), changed); });
    }
    /// The answer is a list.
    template<typename T, auto Key>
    [[nodiscard]] static Keep into(RecordList<T, Key> &list)
    {
        return decoded<QList<T>>([&list](QList<T> answer) { list.assign(std::move(answer)); });
    }
    /// The answer is an object around a list.
    template<typename T, auto Key, typename Answer>
    [[nodiscard]] static Keep into(RecordList<T, Key> &list, QList<T> Answer::*records)
    {
        return decoded<Answer>(
            [&list, records](Answer answer) { list.assign(std::move(answer.*records)); });
    }
    /// The answer has to be a `T` and is then dropped.
    template<typename T>
    [[nodiscard]] static Keep nowhere()
    {
        return decoded<T>([](const T &) {});
    }
    /// Hands the answer's record to `take`.
    template<typename T>
    [[nodiscard]] static Keep decoded(std::invocable<T> auto take)
    {
        return [take](const QByteArray &body) {
            T answer{};
            base::Result<void> read = base::json::decodeInto(answer, body, base::json::Keys::Snake);
            if (read)
                take(std::move(answer));
            return read;
        };
    }

    /// The shape of a load: `isLoading` goes up, `loadError` is cleared, what `work` brings
    /// replaces what was there, or else its failure is reported, and `isLoading` goes down.
    QCoro::Task<void> load(Work work);
    QCoro::Task<void> load(Source source);
    /// Both are asked for at once and kept in this order. When the first fails, the second is
    /// cancelled.
    QCoro::Task<void> load(Source first, Source second);

    /// The shape of a change: `actionError` is cleared, and set if `work` fails, which gives false.
    QCoro::Task<bool> change(Work work);
    /// Nothing is changed here until the service says so: what the change touched is fetched again.
    QCoro::Task<bool> change(Work send, Source touched);

    Reply<void> fetch(Source source);
    /// Each step begins when the one before has succeeded, unless the store is gone by then.
    Reply<void> inTurn(QList<Work> steps);

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
    Reply<void> fetchBoth(Source first, Source second);

    [[nodiscard]] QString loadErrorText() const { return m_loadError.value_or(QString()); }
    [[nodiscard]] QString actionErrorText() const { return m_actionError.value_or(QString()); }

    APIClient &m_api;
    bool m_isLoading = false;
    std::optional<QString> m_loadError;
    std::optional<QString> m_actionError;
};

} // namespace velto::service
