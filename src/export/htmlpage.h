// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "facts/item.h"
#include "importresult.h"

#include <QtCore/QIODevice>
#include <QtCore/QString>

#include <memory>
#include <vector>

/// What a page shows.
struct PageContent
{
    std::vector<std::shared_ptr<const facts::Item>> items;
    std::vector<ImportResult::Failure> failures;
    bool isStopped = false; ///< whether there may be more
};

/// Writes a page of pictures to look at in any browser, which needs nothing else. On any thread; in
/// the language of the application's translators.
///
/// Pictures are within the page. Those of very many items are beside it, in the folder that
/// pagePictureFolder() names, which is made first; the page is there as a whole or not at all.
/// False, with the reason in one line in `error`, when something cannot be written.
bool writeHtmlPage(const QString& fileName, const PageContent& content, QString& error);

/// The same to a device. Pictures stay within the page, however many there are, where
/// `pictureFolder` is empty. What `page` itself does not take, its owner has to find out.
bool writeHtmlPage(QIODevice& page, const QString& pictureFolder, const PageContent& content,
                   QString& error);

/// Where the pictures of a page with too many for one file go: "films_files" for "films.html", as
/// browsers call it. Empty for what is no regular file, which can have none beside it.
QString pagePictureFolder(const QString& fileName);
