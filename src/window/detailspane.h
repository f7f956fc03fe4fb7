// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "picturecache.h"

#include <QtCore/QPersistentModelIndex>
#include <QtWidgets/QWidget>

class GridView;
class LibraryModel;
class PictureLabel;
class QTextBrowser;

/// What is known of the item, title, chapter or clip that is selected: its picture, the chapters
/// or clips in it with theirs, and its facts.
class DetailsPane : public QWidget
{
    Q_OBJECT

public:
    /// `model` outlives this. Pictures of `pictureSize`, in pixels of the window, are large.
    DetailsPane(LibraryModel& model, QSize pictureSize, QWidget* parent = nullptr);

    /// `index` is one of the model's; an invalid one shows nothing.
    void show(const QModelIndex& index);

protected:
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void refresh();
    void refreshPicture();
    void onDataChanged(const QModelIndex& first, const QModelIndex& last,
                       const QVector<int>& roles);

private:
    void showPieces();

    LibraryModel& m_model;
    PictureCache m_pictures;
    PictureLabel* m_picture;
    GridView* m_pieces;
    QTextBrowser* m_text;
    QPersistentModelIndex m_index;
};
