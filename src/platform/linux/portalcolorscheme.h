// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/colorscheme.h"

#include <QDBusVariant>

namespace velto::platform
{

/// Reads the desktop portal's "color-scheme" setting and follows its changes.
class PortalColorScheme final : public ColorScheme
{
    Q_OBJECT

public:
    PortalColorScheme();

    [[nodiscard]] Preference preference() const override { return m_preference; }

private slots:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void request();
    void take(const QVariant &value);

    Preference m_preference = Preference::NoPreference;
};

} // namespace velto::platform
