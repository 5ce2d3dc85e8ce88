// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QString>

/// The keyring daemon of with-keyring.sh, as its user and the desktop deal with it.
namespace velto::test
{

inline const QString secretsName = QStringLiteral("org.freedesktop.secrets");

[[nodiscard]] QDBusObjectPath defaultCollection();
void lockKeyring();
void stopKeyring();
/// A new daemon over the same files, unlocked; a running one can't be unlocked from outside.
void restartKeyring();

/// The desktop's prompt on whose screen nobody answers.
class SilentPrompter final : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.keyring.internal.Prompter")

public:
    SilentPrompter();
    ~SilentPrompter() override;

    bool wasAsked = false;

public slots:
    void BeginPrompting(const QDBusObjectPath &) { wasAsked = true; }
};

} // namespace velto::test
