// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "exporter.h"
#include "filedialogs.h"
#include "library.h"
#include "librarymodel.h"
#include "picturecache.h"
#include "windowactions.h"

#include <QtWidgets/QMainWindow>

class DetailsPane;
class FailureBar;
class ImportBar;
class LibraryView;
class QComboBox;
class QLineEdit;
class QSplitter;
class QStackedWidget;

/// The window: brings files in by drops, pastes and dialogs, and shows what the Library makes of
/// them.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();
    ~MainWindow() override;

    Library& library() { return m_library; }

    /// As Library::add().
    void import(const QStringList& paths);
    /// Says something in a dialog, and returns at once.
    void warn(const QString& text);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private Q_SLOTS:
    void onProgress();
    void onFailures();
    void onShownAgain(const QStringList& keys);
    void onSelection();
    void updateTitle();

private:
    void layOut();
    void makeToolBar();
    void connectActions();
    void connectParts();

    void openFolder(const QString& title, const QString& folder);
    void openList();
    void saveList();
    void exportAs(Exporter::Format format, const QString& title, const QString& suffix);
    void paste();
    void copyPaths();
    void playSelected();
    void removeSelected();
    void applySort();
    void showSort();
    void showAbout();

    void saveSettings() const;
    void restoreSettings();

    PictureCache m_pictures;
    LibraryModel m_model;
    Library m_library;
    Exporter m_exporter;
    WindowActions m_actions;
    LibraryView* m_view;
    DetailsPane* m_details;
    FailureBar* m_failures;
    ImportBar* m_progress;
    QComboBox* m_kind;
    QLineEdit* m_words;
    QSplitter* m_splitter;
    QStackedWidget* m_pages;
    FileDialogs m_dialogs;
};
