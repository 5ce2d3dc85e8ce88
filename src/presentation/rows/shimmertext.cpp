// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "presentation/rows/shimmertext.h"

#include "controls/tokens.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace velto::presentation
{

using controls::Tokens;

namespace
{

constexpr qreal faintness = 0.45;
constexpr qreal brightness = 0.95;
constexpr qreal reach = 0.25; // of the light, to either side, as a share of the width

} // namespace

ShimmerText::ShimmerText(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    connect(&Tokens::instance(), &Tokens::coloursChanged, this, [this] { update(); });
}

void ShimmerText::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    emit textChanged();
    measure();
}

void ShimmerText::setFont(const QFont &font)
{
    if (m_font == font)
        return;
    m_font = font;
    emit fontChanged();
    measure();
}

void ShimmerText::setPhase(qreal phase)
{
    if (m_phase == phase)
        return;
    m_phase = phase;
    emit phaseChanged();
    update();
}

void ShimmerText::measure()
{
    const QFontMetricsF metrics(m_font);
    setImplicitSize(std::ceil(metrics.horizontalAdvance(m_text)), std::ceil(metrics.height()));
    update();
}

void ShimmerText::paint(QPainter *painter)
{
    const Tokens &tokens = Tokens::instance();
    const QRectF all = boundingRect();
    painter->setFont(m_font);
    painter->setPen(Tokens::faded(tokens.secondary(), faintness));
    painter->drawText(all, Qt::AlignLeading | Qt::AlignVCenter, m_text);

    QLinearGradient light(all.topLeft(), all.topRight());
    if (QGuiApplication::isRightToLeft())
        light = QLinearGradient(all.topRight(), all.topLeft());
    const QColor clear = Tokens::faded(tokens.primary(), 0);
    light.setColorAt(std::max(m_phase - reach, 0.0), clear);
    light.setColorAt(std::min(m_phase + reach, 1.0), clear);
    light.setColorAt(m_phase, Tokens::faded(tokens.primary(), brightness));
    painter->setPen(QPen(QBrush(light), 1));
    painter->drawText(all, Qt::AlignLeading | Qt::AlignVCenter, m_text);
}

} // namespace velto::presentation
