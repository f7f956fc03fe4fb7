// SPDX-License-Identifier: GPL-2.0-or-later
#include "mainwindow.h"

#include "desktop.h"
#include "detailspane.h"
#include "droppedpaths.h"
#include "failurebar.h"
#include "importbar.h"
#include "libraryview.h"
#include "listfile.h"
#include "pictureformat.h"
#include "startpage.h"

#include <QAction>
#include <QActionGroup>
#include <QtCore/QMimeData>
#include <QtCore/QSettings>
#include <QtGui/QClipboard>
#include <QtGui/QDropEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

namespace {

const int gridMegabytes = 64;

/// More at once would be more players than anybody wants.
const int mostPlayed = 10;

/// Where it is dropped from may delete what was moved.
void acceptCopy(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

MainWindow::MainWindow()
    : m_pictures(pictureformat::gridSize, devicePixelRatioF(), gridMegabytes)
    , m_model(m_pictures)
    , m_library(m_model)
    , m_actions(*this)
    , m_view(new LibraryView(m_model, pictureformat::gridSize, this))
    , m_details(new DetailsPane(m_model, pictureformat::size, this))
    , m_failures(new FailureBar(this))
    , m_progress(new ImportBar(this))
    , m_kind(new QComboBox(this))
    , m_words(new QLineEdit(this))
    , m_splitter(new QSplitter(this))
    , m_pages(new QStackedWidget(this))
    , m_dialogs(*this)
{
    setAcceptDrops(true);
    makeToolBar();
    layOut();
    connectActions();
    connectParts();
    resize(QSize(1100, 720).boundedTo(screen()->availableSize())); // scaled it may be larger
    restoreSettings();
    onProgress();
    onSelection();
    updateTitle();
}

MainWindow::~MainWindow() = default;

void MainWindow::makeToolBar()
{
    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName(QStringLiteral("tools"));
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addActions({m_actions.openFiles, m_actions.openFolder, m_actions.openDisc});
    bar->addSeparator();
    bar->addActions({m_actions.grid, m_actions.table});
    auto* space = new QWidget(bar);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar->addWidget(space);
    m_kind->setObjectName(QStringLiteral("kind"));
    m_kind->setAccessibleName(tr("Kind"));
    m_kind->setToolTip(tr("Shows only items of one kind"));
    m_kind->addItem(tr("All kinds"), -1);
    for (const auto kind : {facts::ItemKind::Video, facts::ItemKind::Audio, facts::ItemKind::Dvd,
                            facts::ItemKind::Bluray})
        m_kind->addItem(ItemParts::kindName(kind), int(kind));
    m_words->setObjectName(QStringLiteral("words"));
    m_words->setAccessibleName(tr("Find"));
    m_words->setPlaceholderText(tr("Find"));
    m_words->setToolTip(tr("Shows only items in whose facts all of these words are"));
    m_words->setClearButtonEnabled(true);
    m_words->setMaximumWidth(240);
    m_words->setAcceptDrops(false); // what is dropped on it is for the window
    bar->addWidget(m_kind);
    bar->addWidget(m_words);
}

void MainWindow::layOut()
{
    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_details);
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({760, 340});
    m_splitter->setChildrenCollapsible(false);
    m_pages->addWidget(
        new StartPage({m_actions.openFiles, m_actions.openFolder, m_actions.openDisc}, m_pages));
    m_pages->addWidget(m_splitter);
    auto* center = new QWidget(this);
    auto* layout = new QVBoxLayout(center);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_pages, 1);
    layout->addWidget(m_failures);
    layout->addWidget(m_progress);
    setCentralWidget(center);
}

void MainWindow::connectActions()
{
    const auto on = [this](QAction* action, auto slot) {
        connect(action, &QAction::triggered, this, slot);
    };
    on(m_actions.openFiles, [this] { import(m_dialogs.openFiles(tr("Open Files"))); });
    on(m_actions.openFolder, [this] { openFolder(tr("Open Folder"), QString()); });
    on(m_actions.openDisc, [this] { openFolder(tr("Open Disc"), QStringLiteral("/media")); });
    on(m_actions.openList, [this] { openList(); });
    on(m_actions.saveList, [this] { saveList(); });
    on(m_actions.exportJson,
       [this] { exportAs(Exporter::Json, tr("Export as JSON"), QStringLiteral("json")); });
    on(m_actions.exportCsv,
       [this] { exportAs(Exporter::Csv, tr("Export as CSV"), QStringLiteral("csv")); });
    on(m_actions.exportPage,
       [this] { exportAs(Exporter::Page, tr("Export as Page"), QStringLiteral("html")); });
    on(m_actions.quit, [this] { close(); });
    on(m_actions.paste, [this] { paste(); });
    on(m_actions.copyPath, [this] { copyPaths(); });
    on(m_actions.copyJson, [this] { m_exporter.makeText(m_view->selectedItems()); });
    on(m_actions.selectAll, [this] { m_view->selectAllItems(); });
    on(m_actions.remove, [this] { removeSelected(); });
    on(m_actions.moveUp, [this] { m_model.moveKeys(m_view->selectedKeys(), true); });
    on(m_actions.moveDown, [this] { m_model.moveKeys(m_view->selectedKeys(), false); });
    on(m_actions.find, [this] {
        m_words->setFocus(Qt::ShortcutFocusReason);
        m_words->selectAll();
    });
    on(m_actions.grid, [this] { m_view->setLook(LibraryView::Grid); });
    on(m_actions.table, [this] { m_view->setLook(LibraryView::Table); });
    connect(m_actions.details, &QAction::toggled, m_details, &QWidget::setVisible);
    on(m_actions.play, [this] { playSelected(); });
    on(m_actions.showInFolder, [this] {
        QStringList paths;
        for (const auto& item : m_view->selectedItems())
            paths.append(item->sourcePath());
        desktop::showInFolder(paths);
    });
    on(m_actions.stop, [this] { m_library.stop(); });
    on(m_actions.about, [this] { showAbout(); });
    on(m_actions.sortDescending, [this] { applySort(); });
    connect(m_actions.sortColumns, &QActionGroup::triggered, this, [this] { applySort(); });
}

void MainWindow::connectParts()
{
    connect(&m_library, &Library::progressChanged, this, &MainWindow::onProgress);
    connect(&m_library, &Library::failuresChanged, this, &MainWindow::onFailures);
    connect(&m_library, &Library::picturesLost, this, &MainWindow::warn);
    connect(&m_library, &Library::shownAgain, this, &MainWindow::onShownAgain);
    connect(m_view, &LibraryView::currentChanged, m_details, &DetailsPane::show);
    connect(m_view, &LibraryView::selectionChanged, this, &MainWindow::onSelection);
    connect(m_view, &LibraryView::sortChanged, this, [this] { showSort(); });
    connect(m_view, &LibraryView::activated, this, [this] { playSelected(); });
    connect(m_view, &LibraryView::menuRequested, this,
            [this](const QPoint& place) { m_actions.itemMenu->popup(place); });
    connect(m_failures, &FailureBar::tryAgainClicked, this, [this] { m_library.tryAgain(); });
    connect(m_failures, &FailureBar::dismissed, this, [this] { m_library.dropFailures(); });
    connect(m_failures, &FailureBar::saveReportClicked, this,
            [this] { exportAs(Exporter::Report, tr("Save Report"), QStringLiteral("report")); });
    connect(m_progress, &ImportBar::stopClicked, this, [this] { m_library.stop(); });
    connect(m_words, &QLineEdit::textChanged, this, [this](const QString& words) {
        m_view->setWords(words);
        updateTitle();
    });
    connect(m_kind, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        m_view->setKind(m_kind->currentData().toInt());
        updateTitle();
    });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(&m_model, signal, this, &MainWindow::updateTitle);
    connect(&m_exporter, &Exporter::textMade, this,
            [](const QString& text) { QGuiApplication::clipboard()->setText(text); });
    connect(&m_exporter, &Exporter::written, this,
            [this](const QString& fileName, const QString& error) {
                if (!error.isEmpty())
                    warn(tr("%1 was not written: %2").arg(fileName, error));
            });
}

void MainWindow::import(const QStringList& paths)
{
    m_library.add(paths);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->source() == nullptr && !droppedPaths(*event->mimeData()).isEmpty())
        acceptCopy(*event);
}

void MainWindow::dropEvent(QDropEvent* event)
{
    import(droppedPaths(*event->mimeData()));
    acceptCopy(*event);
}

void MainWindow::paste()
{
    import(droppedPaths(*QGuiApplication::clipboard()->mimeData()));
}

void MainWindow::openFolder(const QString& title, const QString& folder)
{
    const QString chosen = m_dialogs.openFolder(title, folder);
    if (!chosen.isEmpty())
        import({chosen});
}

void MainWindow::openList()
{
    const QString fileName = m_dialogs.openFile(tr("Open List"));
    if (fileName.isEmpty())
        return;
    QStringList paths;
    QString error;
    if (ListFile::read(fileName, paths, error))
        import(paths);
    else
        warn(tr("%1 cannot be read: %2").arg(fileName, error));
}

void MainWindow::saveList()
{
    const QString fileName = m_dialogs.saveFile(tr("Save List"), QString());
    if (fileName.isEmpty())
        return;
    QStringList paths;
    for (int row = 0; row < m_model.itemCount(); ++row)
        paths.append(m_model.item(row).sourcePath());
    QString error;
    if (!ListFile::write(fileName, paths, error))
        warn(tr("%1 was not written: %2").arg(fileName, error));
}

/// What is shown, in the order in which it is.
void MainWindow::exportAs(Exporter::Format format, const QString& title, const QString& suffix)
{
    const QString fileName = m_dialogs.saveFile(title, suffix);
    if (fileName.isEmpty())
        return;
    const ImportProgress& progress = m_library.progress();
    m_exporter.write(format, fileName,
                     {m_view->filter().shownItems(), m_library.failures(), m_library.logRecords(),
                      progress.isBusy || progress.isStopped, progress.importPercent(),
                      progress.picturePercent()});
}

void MainWindow::copyPaths()
{
    QStringList paths;
    QList<QUrl> urls;
    for (const auto& item : m_view->selectedItems()) {
        paths.append(item->sourcePath());
        urls.append(QUrl::fromLocalFile(item->sourcePath()));
    }
    auto* data = new QMimeData;
    data->setText(paths.join(QLatin1Char('\n')));
    data->setUrls(urls);
    QGuiApplication::clipboard()->setMimeData(data);
}

void MainWindow::playSelected()
{
    const auto items = m_view->selectedItems();
    for (std::size_t i = 0; i < items.size() && i < mostPlayed; ++i)
        desktop::open(items[i]->sourcePath());
}

void MainWindow::removeSelected()
{
    const QStringList keys = m_view->selectedKeys();
    m_view->clearSelection();
    m_library.remove(keys);
}

void MainWindow::applySort()
{
    const QAction* column = m_actions.sortColumns->checkedAction();
    m_view->sort(column ? column->data().toInt() : -1,
                 m_actions.sortDescending->isChecked() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void MainWindow::showSort()
{
    for (QAction* action : m_actions.sortColumns->actions())
        action->setChecked(action->data().toInt() == m_view->sortColumn());
    m_actions.sortDescending->setChecked(m_view->sortOrder() == Qt::DescendingOrder);
    onSelection();
}

void MainWindow::onProgress()
{
    const ImportProgress& progress = m_library.progress();
    m_progress->show(progress, m_library.otherKinds());
    m_actions.stop->setEnabled(progress.isBusy);
    const bool isEmpty = m_model.itemCount() == 0;
    m_pages->setCurrentIndex(isEmpty && !progress.isBusy ? 0 : 1);
    for (QAction* action : m_actions.ofList())
        action->setEnabled(!isEmpty);
}

void MainWindow::onFailures()
{
    m_failures->setFailures(m_library.failures());
}

/// What a filter hides would not be seen.
void MainWindow::onShownAgain(const QStringList& keys)
{
    m_words->clear();
    m_kind->setCurrentIndex(0);
    m_view->showItems(keys);
}

void MainWindow::onSelection()
{
    const bool hasSelection = !m_view->selectedKeys().isEmpty();
    for (QAction* action : m_actions.ofItems())
        action->setEnabled(hasSelection);
    for (QAction* action : {m_actions.moveUp, m_actions.moveDown})
        action->setEnabled(hasSelection && m_view->sortColumn() < 0);
}

void MainWindow::updateTitle()
{
    const int all = m_model.itemCount();
    const int shown = m_view->filter().rowCount();
    QString title = QStringLiteral("vspimport");
    if (all > 0 && shown < all)
        title = tr("%1 of %n item(s) — vspimport", "", all).arg(shown);
    else if (all > 0)
        title = tr("%n item(s) — vspimport", "", all);
    setWindowTitle(title);
    onProgress();
}

void MainWindow::showAbout()
{
    QMessageBox::about(
        this, tr("About vspimport"),
        tr("<h3>vspimport %1</h3><p>Shows what is in media files, DVDs and Blu-ray discs.</p>"
           "<p>Qt %2, built with %3</p><p>The window is free software under the GNU General "
           "Public License, version 2 or later; the import module under the Lesser one, version "
           "2.1 or later.</p>")
            .arg(QCoreApplication::applicationVersion(), QLatin1String(qVersion()),
                 QLatin1String(QT_VERSION_STR)));
}

void MainWindow::warn(const QString& text)
{
    auto* box = new QMessageBox(QMessageBox::Warning, tr("vspimport"), text, QMessageBox::Ok, this);
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    saveSettings();
    m_library.stop();
    QMainWindow::closeEvent(event);
}

void MainWindow::saveSettings() const
{
    QSettings settings;
    settings.setValue(QStringLiteral("geometry"), saveGeometry());
    settings.setValue(QStringLiteral("splitter"), m_splitter->saveState());
    settings.setValue(QStringLiteral("details"), m_actions.details->isChecked());
    settings.setValue(QStringLiteral("folder"), m_dialogs.folder());
    m_view->saveState(settings);
}

void MainWindow::restoreSettings()
{
    const QSettings settings;
    restoreGeometry(settings.value(QStringLiteral("geometry")).toByteArray());
    m_splitter->restoreState(settings.value(QStringLiteral("splitter")).toByteArray());
    m_actions.details->setChecked(settings.value(QStringLiteral("details"), true).toBool());
    m_dialogs.setFolder(settings.value(QStringLiteral("folder"), m_dialogs.folder()).toString());
    m_view->restoreState(settings);
    (m_view->look() == LibraryView::Grid ? m_actions.grid : m_actions.table)->setChecked(true);
    showSort();
}
