// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/box.h"
#include "markdown/render/imageparagraph.h"

namespace velto::markdown
{

/// A paragraph of pictures: one alone, or a flow of them.
class ImageBox final : public Box
{
public:
    ImageBox(BoxHost &host, const EnvironmentPointer &environment, const BlockView &view,
             ImageFlow flow);

    [[nodiscard]] bool take(const BlockNode &block) override;

protected:
    [[nodiscard]] qreal layOutContent(qreal width) override;
    void showContent(const QRectF &visible, QQuickItem &item) override;
    void hideContent() override;

private:
    struct Picture
    {
        RawImageData data;
        QSizeF size; ///< As it would like to be; kept while nothing shows.
        std::unique_ptr<QQuickItem> frame;
        QPointer<QQuickItem> image;
    };

    void makePicture(Picture &picture, QQuickItem &item);
    void noteSize(Picture &picture);

    ImageFlow m_flow;
    std::vector<Picture> m_pictures; ///< One for each item that isn't a break.
    QList<QRectF> m_places;          ///< One for each picture.
};

/// The flow that a paragraph is, if it is nothing but pictures.
[[nodiscard]] std::optional<ImageFlow> picturesOf(const QList<InlineNode> &nodes);

} // namespace velto::markdown
