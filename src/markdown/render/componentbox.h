// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/box.h"

#include <functional>

namespace velto::markdown
{

/// A block whose style draws it with a QML component. The item exists while the block shows; its
/// height is remembered.
class ComponentBox final : public Box
{
public:
    /// What a block of the box's kind gives the component; absent for another kind.
    using Properties = std::function<std::optional<QVariantMap>(const BlockNode &)>;

    ComponentBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
                 Properties properties, const BlockNode &block);
    ~ComponentBox() override;

    [[nodiscard]] bool take(const BlockNode &block) override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;

private:
    [[nodiscard]] qreal guessedHeight() const;

    Properties m_propertiesOf;
    QVariantMap m_properties;
    std::unique_ptr<QQuickItem> m_made;
    std::optional<qreal> m_height;
};

/// A hairline across.
class DividerBox final : public Box
{
public:
    using Box::Box;

    [[nodiscard]] bool take(const BlockNode &block) override;
    void paint(QSGNode &node, QQuickItem &item) override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    [[nodiscard]] bool drawsContent() const override { return true; }
};

} // namespace velto::markdown
