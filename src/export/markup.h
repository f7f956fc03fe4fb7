// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// What becomes of the ends of lines in a text.
enum class Lines
{
    Shown, ///< as signs: a name has one line
    Kept
};

/// `text` as HTML in UTF-8, in an element or between quotation marks: the only way for texts into a
/// page. Names and tags may hold anything, so nothing of it is markup, and what is no character, or
/// would steer the browser (controls, what turns the direction of writing), is shown as a sign.
QByteArray markup(const QString& text, Lines lines = Lines::Shown);
