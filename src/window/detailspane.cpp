// SPDX-License-Identifier: GPL-2.0-or-later
#include "detailspane.h"

#include "detailstext.h"
#include "gridview.h"
#include "librarymodel.h"
#include "picturelabel.h"

#include <QtCore/QEvent>
#include <QtCore/QItemSelectionModel>
#include <QtWidgets/QTextBrowser>
#include <QtWidgets/QVBoxLayout>

namespace {

const int cacheMegabytes = 16;
const QSize pieceSize(112, 63);

} // namespace

DetailsPane::DetailsPane(LibraryModel& model, QSize pictureSize, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_pictures(pictureSize, devicePixelRatioF(), cacheMegabytes)
    , m_picture(new PictureLabel(this))
    , m_pieces(new GridView(GridView::Strip, pieceSize, this))
    , m_text(new QTextBrowser(this))
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_picture);
    layout->addWidget(m_pieces);
    layout->addWidget(m_text, 1);
    setMinimumWidth(240);
    m_picture->setAccessibleName(tr("Picture"));
    m_pieces->setAccessibleName(tr("Chapters and clips"));
    m_pieces->setModel(&m_model);
    m_text->setAccessibleName(tr("Facts"));
    m_text->setOpenLinks(false);
    m_text->setTabChangesFocus(true);
    m_text->setTextInteractionFlags(Qt::TextBrowserInteraction);
    m_text->setPlaceholderText(tr("Select an item to see what is in it."));
    connect(&m_pictures, &PictureCache::loaded, this, &DetailsPane::refreshPicture);
    connect(&m_model, &QAbstractItemModel::dataChanged, this, &DetailsPane::onDataChanged);
    connect(m_pieces, &GridView::currentMoved, this, &DetailsPane::refreshPicture);
    connect(&m_model, &QAbstractItemModel::rowsRemoved, this, &DetailsPane::refresh);
    refresh();
}

void DetailsPane::show(const QModelIndex& index)
{
    m_index = index.siblingAtColumn(0);
    m_pieces->selectionModel()->clear(); // which is of what was shown before
    refresh();
}

void DetailsPane::refresh()
{
    m_text->setHtml(DetailsText::text(m_model.place(m_index)));
    showPieces();
    refreshPicture();
}

/// Of a disc those of its main title, of a chapter or clip all of its title.
void DetailsPane::showPieces()
{
    const Place place = m_model.place(m_index);
    QModelIndex owner = m_index;
    if (place.isItem() && place.item->isDisc())
        owner = m_model.index(0, 0, m_index);
    if (place.piece >= 0)
        owner = m_model.parent(m_index);
    const bool hasPieces =
        owner.isValid() && m_model.place(owner).isPart() && m_model.rowCount(owner) > 0;
    m_pieces->setVisible(hasPieces);
    if (!hasPieces)
        return;
    m_pieces->setRootIndex(owner);
    if (place.piece >= 0)
        m_pieces->setCurrentIndex(m_index);
}

/// That of a chapter or clip that was chosen here, else that of what is shown.
void DetailsPane::refreshPicture()
{
    QModelIndex index = m_index;
    if (m_pieces->isVisibleTo(this) && m_pieces->currentIndex().isValid())
        index = m_pieces->currentIndex();
    const Place place = m_model.place(index);
    const QString file = place.item ? ItemParts::pictureFile(place) : QString();
    const QPixmap picture = file.isEmpty() ? QPixmap() : m_pictures.picture(file);
    m_picture->setPicture(picture);
    // While it is loaded its place is kept.
    m_picture->setVisible(!picture.isNull() || m_pictures.isAwaited(file));
}

/// Pictures in the list come and go; facts change when more is known.
void DetailsPane::onDataChanged(const QModelIndex& first, const QModelIndex& last,
                                const QVector<int>& roles)
{
    if (roles.isEmpty() && m_index.isValid() && m_index.parent() == first.parent() &&
        first.row() <= m_index.row() && m_index.row() <= last.row()) {
        m_pictures.forget(ItemParts::pictureFile(m_model.place(m_index)));
        refresh();
    }
}

void DetailsPane::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        refresh();
}
