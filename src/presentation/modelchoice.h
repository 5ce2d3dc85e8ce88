// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "chat/appstate.h"

#include <QObject>
#include <QPointer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace velto::presentation
{

/// Which model answers, and which others could. Follows the settings: a choice shows once the
/// service has taken it.
class ModelChoice : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(velto::chat::AppState *appState READ appState WRITE setAppState NOTIFY
                   appStateChanged REQUIRED FINAL)
    /// Short: without the family's name.
    Q_PROPERTY(QString label READ label NOTIFY selectionChanged FINAL)
    Q_PROPERTY(QString selectionKey READ selectionKey NOTIFY selectionChanged FINAL)
    /// Whether the user may choose.
    Q_PROPERTY(bool canChoose READ canChoose NOTIFY canChooseChanged FINAL)
    /// In their order: objects of `label`, `selectionKey` and `isSelected`.
    Q_PROPERTY(QVariantList options READ options NOTIFY selectionChanged FINAL)

public:
    using QObject::QObject;

    [[nodiscard]] chat::AppState *appState() const { return m_appState; }
    void setAppState(chat::AppState *appState);

    [[nodiscard]] QString label() const;
    [[nodiscard]] QString selectionKey() const { return m_selectionKey; }
    [[nodiscard]] bool canChoose() const { return m_canChoose; }
    [[nodiscard]] QVariantList options() const;

    /// Loads the settings unless they are there.
    Q_INVOKABLE void load();
    Q_INVOKABLE void choose(const QString &selectionKey);

signals:
    void appStateChanged();
    void selectionChanged();
    void canChooseChanged();

private:
    void updateSelection();
    void updateCanChoose();

    QPointer<chat::AppState> m_appState;
    QString m_selectionKey;
    bool m_canChoose = false;
};

/// The key of the model that answers as far as is known.
[[nodiscard]] QString modelSelectionKey(const std::optional<agent::AppSettings> &settings);
/// What the picker shows of it.
[[nodiscard]] QString shortModelLabel(const QString &selectionKey);

} // namespace velto::presentation
