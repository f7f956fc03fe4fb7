// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importresult.h"
#include "logcollector.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QStringList>

/// Writes the whole of an import as one JSON document, an item at a time. False when `device` does
/// not take it.
bool writeJsonDocument(QIODevice& device, const QStringList& sources, const ImportResult& result,
                       const QList<LogCollector::Record>& log);

/// One line of JSON, with its end: an item, or what could not be imported.
QByteArray jsonLine(const facts::Item& item);
QByteArray jsonLine(const ImportResult::Failure& failure);

/// The signal that `event` is as a line of JSON; empty for one that is none.
QByteArray jsonLine(const ImportEvent& event);
