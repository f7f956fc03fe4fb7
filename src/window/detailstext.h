// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "itemparts.h"

#include <QtCore/QCoreApplication>

/// The facts of a place as rich text for a QTextBrowser. Nothing that comes from a file becomes
/// markup. Of thousands of streams, tags, titles or clips the first are shown.
class DetailsText
{
    Q_DECLARE_TR_FUNCTIONS(DetailsText)

public:
    static QString text(const Place& place);

private:
    static QString itemFacts(const facts::Item& item);
    static QString placeFacts(const Place& place);
    static QString streams(const facts::Movie& movie);
    static QString tags(const facts::Movie& movie);
    static QString subtitles(const facts::DvdTitle& title);
    static QString titles(const Place& place);
    static QString clipNames(const facts::Bluray& disc, const facts::BlurayTitle& title);
    static QString blurayFiles(const Place& place);
    static QString more(std::size_t count);
};
