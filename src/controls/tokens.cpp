// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "controls/tokens.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QJSEngine>
#include <QScreen>

#include <algorithm>

namespace velto::controls
{

namespace
{

bool paletteIsDark(const QPalette &palette)
{
    return palette.color(QPalette::Window).lightnessF() <
           palette.color(QPalette::WindowText).lightnessF();
}

// As the eye weighs the channels; 0 is black and 1 white.
qreal luminance(const QColor &colour)
{
    return 0.2126 * colour.redF() + 0.7152 * colour.greenF() + 0.0722 * colour.blueF();
}

QColor mixed(const QColor &a, const QColor &b, qreal share)
{
    return QColor::fromRgbF(static_cast<float>(a.redF() + (b.redF() - a.redF()) * share),
                            static_cast<float>(a.greenF() + (b.greenF() - a.greenF()) * share),
                            static_cast<float>(a.blueF() + (b.blueF() - a.blueF()) * share));
}

// Without asking for the font itself, which takes long.
qreal desktopPixelSize()
{
    const QFont font = QGuiApplication::font();
    if (font.pixelSize() > 0)
        return font.pixelSize();
    const QScreen *screen = QGuiApplication::primaryScreen();
    const qreal dpi = screen == nullptr ? 96 : screen->logicalDotsPerInchY();
    return font.pointSizeF() * dpi / 72;
}

} // namespace

qreal textScaleFor(qreal pixelSize)
{
    constexpr qreal least = 12;
    constexpr qreal most = 11.0 * 96 / 72;
    if (pixelSize <= 0)
        return 1;
    return std::clamp(pixelSize / std::clamp(pixelSize, least, most), 0.75, 3.0);
}

Tokens &Tokens::instance()
{
    static Tokens tokens;
    return tokens;
}

Tokens *Tokens::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&instance(), QJSEngine::CppOwnership);
    return &instance();
}

Tokens::Tokens()
{
    qGuiApp->installEventFilter(this);
    applyPalette();
    applyFont();
}

void Tokens::setScheme(Scheme scheme)
{
    if (m_scheme == scheme)
        return;
    m_scheme = scheme;
    applyPalette();
}

void Tokens::setAccent(const QColor &accent)
{
    if (m_chosenAccent == accent)
        return;
    m_chosenAccent = accent;
    applyPalette();
}

void Tokens::setTextFactor(qreal factor)
{
    m_textFactor = factor;
    applyFont();
}

QString Tokens::monospaced()
{
    return QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
}

QColor Tokens::faded(const QColor &colour, qreal opacity)
{
    QColor result = colour;
    result.setAlphaF(static_cast<float>(colour.alphaF() * opacity));
    return result;
}

bool Tokens::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange && watched == qGuiApp)
        applyPalette();
    else if (event->type() == QEvent::ApplicationFontChange && watched == qGuiApp)
        applyFont();
    return QObject::eventFilter(watched, event);
}

void Tokens::applyFont()
{
    const qreal scale = textScaleFor(desktopPixelSize() * m_textFactor);
    if (qFuzzyCompare(m_textScale, scale))
        return;
    m_textScale = scale;
    emit textScaleChanged();
}

void Tokens::applyPalette()
{
    const QPalette palette = QGuiApplication::palette();
    const bool desktopDark = paletteIsDark(palette);
    m_dark = m_scheme == Scheme::NoPreference ? desktopDark : m_scheme == Scheme::Dark;
    // A palette of the other lightness has no colours for us beyond its accent.
    if (m_dark == desktopDark) {
        m_background = palette.color(QPalette::Base);
        m_primary = palette.color(QPalette::Text);
    } else {
        m_background = m_dark ? QColor(0x1c, 0x1c, 0x1e) : QColor(0xff, 0xff, 0xff);
        m_primary = m_dark ? QColor(0xf2, 0xf2, 0xf4) : QColor(0x1c, 0x1c, 0x1e);
    }
    m_surface = m_dark ? mixed(m_background, m_primary, 0.06) : m_background;
    m_sidebar = mixed(m_background, m_primary, 0.035);
    m_secondary = mixed(m_background, m_primary, 0.6);
    m_tertiary = mixed(m_background, m_primary, 0.45);
    // One pixel at half its weight.
    m_hairline = faded(m_primary, m_dark ? 0.16 : 0.1);
    m_accent = m_chosenAccent.isValid() ? m_chosenAccent : palette.color(QPalette::Highlight);
    m_onAccent = luminance(m_accent) > 0.7 ? QColor(Qt::black) : QColor(Qt::white);
    m_selection = faded(m_accent, 0.35);
    m_warning = m_dark ? QColor(0xff, 0x9f, 0x0a) : QColor(0xe8, 0x7a, 0x00);
    m_success = m_dark ? QColor(0x32, 0xd7, 0x4b) : QColor(0x24, 0x8a, 0x3d);
    m_failure = m_dark ? QColor(0xff, 0x69, 0x61) : QColor(0xd7, 0x00, 0x15);
    emit coloursChanged();
}

} // namespace velto::controls
