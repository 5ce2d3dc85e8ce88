// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QObject>
#include <QPalette>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace velto::controls
{

/// How much greater or smaller than usual a desktop wants its text, from the height of its font in
/// device-independent pixels. Fonts of 9 to 11 points at 96 dpi are usual.
[[nodiscard]] qreal textScaleFor(qreal pixelSize);

/// Every colour, size and duration that screens share. Colours follow the desktop: its palette
/// gives the accent and, where it agrees with the wanted scheme, text and background too.
///
/// Lengths are in device-independent pixels, durations in milliseconds. One instance per process,
/// on the main thread.
class Tokens final : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

    Q_PROPERTY(bool dark READ isDark NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor background READ background NOTIFY coloursChanged FINAL)
    /// What floats over the background: the composer's card, the banner.
    Q_PROPERTY(QColor surface READ surface NOTIFY coloursChanged FINAL)
    /// Behind the sidebar.
    Q_PROPERTY(QColor sidebar READ sidebar NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor primary READ primary NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor secondary READ secondary NOTIFY coloursChanged FINAL)
    /// The faintest of the three, for what is only looked for.
    Q_PROPERTY(QColor tertiary READ tertiary NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor hairline READ hairline NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor accent READ accent NOTIFY coloursChanged FINAL)
    /// Readable on the accent.
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor selection READ selection NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor warning READ warning NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor success READ success NOTIFY coloursChanged FINAL)
    Q_PROPERTY(QColor failure READ failure NOTIFY coloursChanged FINAL)

    /// The desktop's family for code.
    Q_PROPERTY(QString monospaced READ monospaced CONSTANT FINAL)
    Q_PROPERTY(qreal spaceTiny MEMBER spaceTiny CONSTANT FINAL)
    Q_PROPERTY(qreal spaceSmall MEMBER spaceSmall CONSTANT FINAL)
    Q_PROPERTY(qreal spaceMedium MEMBER spaceMedium CONSTANT FINAL)
    Q_PROPERTY(qreal spaceLarge MEMBER spaceLarge CONSTANT FINAL)
    Q_PROPERTY(qreal radiusSmall MEMBER radiusSmall CONSTANT FINAL)
    Q_PROPERTY(qreal radiusMedium MEMBER radiusMedium CONSTANT FINAL)

    /// What sizes of text are multiplied with: 1 for the text sizes that desktops usually have,
    /// greater where the user wants greater text.
    Q_PROPERTY(qreal textScale READ textScale NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(qreal caption READ caption NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(qreal body READ body NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(qreal reading READ reading NOTIFY textScaleChanged FINAL)
    Q_PROPERTY(qreal readingLineHeight MEMBER readingLineHeight CONSTANT FINAL)

    Q_PROPERTY(int quick MEMBER quick CONSTANT FINAL)

public:
    enum class Scheme { NoPreference, Dark, Light };
    Q_ENUM(Scheme)

    /// The instance that QML sees too. Needs a QGuiApplication.
    [[nodiscard]] static Tokens &instance();
    static Tokens *create(QQmlEngine *engine, QJSEngine *scriptEngine);

    /// What the desktop prefers; with no preference the palette decides.
    void setScheme(Scheme scheme);
    /// What the desktop has chosen beside its palette; an invalid colour leaves the palette's.
    void setAccent(const QColor &accent);
    /// How many times as large as its font the desktop wants text.
    void setTextFactor(qreal factor);

    [[nodiscard]] bool isDark() const { return m_dark; }
    [[nodiscard]] static QString monospaced();
    [[nodiscard]] QColor background() const { return m_background; }
    [[nodiscard]] QColor surface() const { return m_surface; }
    [[nodiscard]] QColor sidebar() const { return m_sidebar; }
    [[nodiscard]] QColor primary() const { return m_primary; }
    [[nodiscard]] QColor secondary() const { return m_secondary; }
    [[nodiscard]] QColor tertiary() const { return m_tertiary; }
    [[nodiscard]] QColor hairline() const { return m_hairline; }
    [[nodiscard]] QColor accent() const { return m_accent; }
    [[nodiscard]] QColor onAccent() const { return m_onAccent; }
    [[nodiscard]] QColor selection() const { return m_selection; }
    [[nodiscard]] QColor warning() const { return m_warning; }
    [[nodiscard]] QColor success() const { return m_success; }
    [[nodiscard]] QColor failure() const { return m_failure; }

    [[nodiscard]] qreal textScale() const { return m_textScale; }
    [[nodiscard]] qreal caption() const { return 12 * m_textScale; }
    [[nodiscard]] qreal body() const { return 13 * m_textScale; }
    [[nodiscard]] qreal reading() const { return 15 * m_textScale; }

    /// `colour` at `opacity` times its own.
    Q_INVOKABLE static QColor faded(const QColor &colour, qreal opacity);

    static constexpr qreal spaceTiny = 4;
    static constexpr qreal spaceSmall = 8;
    static constexpr qreal spaceMedium = 12;
    static constexpr qreal spaceLarge = 20;
    static constexpr qreal radiusSmall = 7;
    static constexpr qreal radiusMedium = 12;
    static constexpr qreal readingLineHeight = 1.3;
    static constexpr int quick = 150;

signals:
    void coloursChanged();
    void textScaleChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Tokens();

    void applyPalette();
    void applyFont();

    Scheme m_scheme = Scheme::NoPreference;
    QColor m_chosenAccent;
    qreal m_textFactor = 1;
    qreal m_textScale = 1;
    bool m_dark = false;
    QColor m_background;
    QColor m_surface;
    QColor m_sidebar;
    QColor m_primary;
    QColor m_secondary;
    QColor m_tertiary;
    QColor m_hairline;
    QColor m_accent;
    QColor m_onAccent;
    QColor m_selection;
    QColor m_warning;
    QColor m_success;
    QColor m_failure;
};

} // namespace velto::controls
