// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#include "markdown/render/componentbox.h"

#include "markdown/render/blockitem.h"
#include "markdown/render/laidtext.h"
#include "markdown/render/textnode.h"

#include <utility>

namespace velto::markdown
{

ComponentBox::ComponentBox(BoxHost &host, const EnvironmentPointer &environment,
                           const BlockView &view, Properties properties, const BlockNode &block)
    : Box(host, environment, view)
    , m_propertiesOf(std::move(properties))
    , m_properties(m_propertiesOf(block).value_or(QVariantMap()))
{}

ComponentBox::~ComponentBox() = default;

bool ComponentBox::take(const BlockNode &block)
{
    const std::optional<QVariantMap> properties = m_propertiesOf(block);
    if (!properties)
        return false;
    m_properties = *properties;
    if (m_made) {
        for (auto entry = m_properties.cbegin(); entry != m_properties.cend(); ++entry)
            m_made->setProperty(entry.key().toLatin1().constData(), entry.value());
    } else {
        m_height.reset();
    }
    invalidate();
    return true;
}

qreal ComponentBox::guessedHeight() const
{
    qsizetype lines = 1;
    for (const QVariant &value : m_properties)
        lines += value.toString().count(QLatin1Char('\n'));
    return static_cast<qreal>(lines) *
           LaidText::singleLineHeight(environment()->text, environment()->lineHeight);
}

qreal ComponentBox::layOutContent(qreal width)
{
    if (m_made) {
        m_made->setWidth(width);
        m_height = m_made->implicitHeight();
    }
    return std::ceil(m_height.value_or(guessedHeight()));
}

void ComponentBox::showContent(const QRectF &, QQuickItem &item)
{
    if (!m_made) {
        QVariantMap properties = m_properties;
        properties.insert(QStringLiteral("width"), contentWidth());
        const auto *component = std::get_if<BlockView::Component>(&view().content());
        m_made.reset(host().makeComponent(component->url, properties, &item));
        if (!m_made)
            return;
        QObject::connect(m_made.get(), &QQuickItem::implicitHeightChanged, m_made.get(), [this] {
            invalidate();
            host().layOutSoon();
        });
        invalidate();
    }
    m_made->setPosition(contentOrigin());
    m_made->setWidth(contentWidth());
    m_made->setHeight(m_made->implicitHeight());
}

void ComponentBox::hideContent()
{
    m_made.reset();
}

bool DividerBox::take(const BlockNode &block)
{
    return std::holds_alternative<blocks::ThematicBreak>(block.kind);
}

qreal DividerBox::layOutContent(qreal)
{
    return 1;
}

void DividerBox::showContent(const QRectF &, QQuickItem &item)
{
    describe(item, QAccessible::Separator, {});
}

void DividerBox::paint(QSGNode &node, QQuickItem &item)
{
    Box::paint(node, item);
    addRectangle(node, item, {contentOrigin(), QSizeF(contentWidth(), 1)},
                 Ink::hairline().colour());
}

} // namespace velto::markdown
