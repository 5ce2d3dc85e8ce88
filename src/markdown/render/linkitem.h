// SPDX-FileCopyrightText: 2026 The velto authors
// SPDX-License-Identifier: MIT

#pragma once

#include "markdown/render/textbox.h"

#include <QQuickItem>

namespace velto::markdown
{

/// A link as the keyboard and assistive technology meet it. The pointer goes to the view, which
/// also selects text; this item lies over the link, shows the focus and opens the target.
class LinkItem final : public QQuickItem
{
    Q_OBJECT

public:
    LinkItem(BoxHost &host, TextBox::Link link);

    [[nodiscard]] const TextBox::Link &link() const { return m_link; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;

private:
    BoxHost &m_host;
    TextBox::Link m_link;
    bool m_showsFocus = false;
};

} // namespace velto::markdown
