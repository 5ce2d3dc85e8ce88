// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/appearance.h"

#include <QDBusVariant>
#include <QMap>
#include <QVariantMap>

namespace velto::platform
{

/// Reads the settings of the desktop portal that are about looks and follows their changes.
class PortalAppearance final : public Appearance
{
    Q_OBJECT

public:
    /// Where resolutions are those of the desktop's settings, as on X11, text that is to be larger
    /// has made them so, and the factor must not count once more.
    explicit PortalAppearance(bool resolutionHasTextFactor);

    [[nodiscard]] const Looks &looks() const override { return m_looks; }

private slots:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void request();
    void take(const QMap<QString, QVariantMap> &settings);
    [[nodiscard]] Looks with(const QString &group, const QString &key, const QVariant &value) const;
    void setLooks(const Looks &looks);

    bool m_resolutionHasTextFactor;
    Looks m_looks;
};

} // namespace velto::platform
