// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// Paths as a person gave them: below a single folder relative to it, else beginning with the
/// source.
class ShownPaths
{
public:
    explicit ShownPaths(const QStringList& sources);

    /// `path`, absolute, of an item.
    QString shown(const QString& path) const;

private:
    struct Source
    {
        QString absolute; ///< with a separator behind it
        QString given;    ///< the same; empty when it is the only one
    };

    std::vector<Source> m_sources;
};
