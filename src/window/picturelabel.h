// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtGui/QPixmap>
#include <QtWidgets/QWidget>

/// A picture as large as there is room, in its shape.
class PictureLabel : public QWidget
{
    Q_OBJECT

public:
    explicit PictureLabel(QWidget* parent = nullptr);

    /// A null one leaves it empty.
    void setPicture(const QPixmap& picture);
    bool hasPicture() const { return !m_picture.isNull(); }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return width * 9 / 16; }
    QSize sizeHint() const override { return QSize(320, 180); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_picture;
};
