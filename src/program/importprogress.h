// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "importsession.h"
#include "progressline.h"

/// Shows a person how far an import is: what has been found, then how many of the pictures have
/// been taken and how long the rest takes.
class ImportProgress
{
public:
    /// A percentage of the sources is shown where there are several; that of one would stay 0.
    ImportProgress(bool enabled, bool hasManySources);

    void show(const ImportEvent& event);
    void clear() { m_line.clear(); }

private:
    QString pictureText() const;

    ProgressLine m_line;
    const bool m_hasManySources;
    int m_found = 0; ///< in all
    int m_tasks = 0; ///< of this part
    int m_pictured = 0;
    int m_percent = 0;
    QElapsedTimer m_sincePictures;
};
