// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "library.h"
#include "mainwindow.h"

#include <QtCore/QMimeData>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtGui/QDropEvent>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

/// A real window, and hands to drive it with. Its models are checked as long as it lives.
class WindowDriver
{
public:
    WindowDriver()
        : m_filterTester(model())
        , m_modelTester(qobject_cast<QSortFilterProxyModel*>(model())->sourceModel())
    {
        QObject::connect(&window.library(), &Library::progressChanged, &window, [this] {
            const ImportProgress& progress = window.library().progress();
            isBackwards = isBackwards || (progress.isBusy && progress.fraction < m_fraction);
            m_fraction = progress.isBusy ? progress.fraction : 0.0;
        });
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("no window");
    }

    /// The list as it is shown, with all that is filtered and sorted.
    QAbstractItemModel* model() { return window.findChild<QTreeView*>()->model(); }
    QTreeView* table() { return window.findChild<QTreeView*>(); }
    QTextBrowser* details() { return window.findChild<QTextBrowser*>(); }
    template <typename Type>
    Type* child(const char* name)
    {
        auto* found = window.findChild<Type*>(QLatin1String(name));
        if (!found)
            qFatal("nothing is called %s", name);
        return found;
    }
    void trigger(const char* action) { child<QAction>(action)->trigger(); }

    /// Drops files on `target` as a file manager does; whether it was taken.
    bool drop(const QStringList& paths, QWidget* target = nullptr)
    {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : paths)
            urls.append(QUrl::fromLocalFile(path));
        data.setUrls(urls);
        target = target ? target : &window;
        const QPoint place = target->rect().center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &enter);
        QDropEvent event(place, Qt::MoveAction | Qt::CopyAction, &data, Qt::LeftButton,
                         Qt::ShiftModifier);
        QApplication::sendEvent(target, &event);
        return enter.isAccepted() && event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }

    /// Until nothing more is to be done.
    bool wait()
    {
        return QTest::qWaitFor([this] { return !window.library().progress().isBusy; }, 120000);
    }
    bool import(const QStringList& paths) { return drop(paths) && wait(); }

    /// Texts of a column, in the order shown.
    QStringList column(int column)
    {
        QStringList texts;
        for (int row = 0; row < model()->rowCount(); ++row)
            texts.append(model()->index(row, column).data().toString());
        return texts;
    }
    QModelIndex find(const QString& name, const QModelIndex& parent = {})
    {
        for (int row = 0; row < model()->rowCount(parent); ++row) {
            if (model()->index(row, 0, parent).data().toString() == name)
                return model()->index(row, 0, parent);
        }
        return {};
    }
    void select(const QModelIndex& index) { table()->setCurrentIndex(index); }

    /// Does `action`, which opens a dialog for a file, and chooses `path` in it.
    void chooseFile(const QString& path, const std::function<void()>& action)
    {
        bool isChosen = false;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &window, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog || isChosen)
                return;
            isChosen = true;
            dialog->selectFile(path);
            dialog->findChild<QLineEdit*>()->setText(path);
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        });
        timer.start(20);
        action();
        if (!isChosen)
            qFatal("no dialog for files");
    }

    MainWindow window;
    bool isBackwards = false; ///< whether the bar ever ran so

private:
    QAbstractItemModelTester m_filterTester;
    QAbstractItemModelTester m_modelTester;
    double m_fraction = 0.0;
};
