// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "service/apiclient.h"

#include <QObject>

#include <optional>

namespace velto::service
{

/// What the feature stores have in common: the client, whether a load is running, and the two
/// texts in which a failure shows. A store never reports to a screen in another way. Main thread.
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
    [[nodiscard]] APIClient &api() const { return m_api; }
    void setLoading(bool loading);
    void setLoadError(std::optional<QString> error);
    void setActionError(std::optional<QString> error);

private:
    [[nodiscard]] QString loadErrorText() const { return m_loadError.value_or(QString()); }
    [[nodiscard]] QString actionErrorText() const { return m_actionError.value_or(QString()); }

    APIClient &m_api;
    bool m_isLoading = false;
    std::optional<QString> m_loadError;
    std::optional<QString> m_actionError;
};

} // namespace velto::service
