// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspimportglobal.h"

#include <QtCore/QObject>
#include <QtCore/QString>

namespace Vesk {

class CDVDSubtitlePrivate;

/// One subtitle stream of a DVD title.
class VSPIMPORT_EXPORT CDVDSubtitle : public QObject
{
    Q_OBJECT

public:
    /// Without language and identifier.
    CDVDSubtitle(QObject* parent = 0);
    virtual ~CDVDSubtitle();

    /// Language code of two letters, or empty.
    QString name() const;
    void setName(const QString& name);

    /// The engine's stream identifier; all bits set means none.
    unsigned int streamId() const;
    void setStreamId(unsigned int id);

private:
    CDVDSubtitlePrivate* d;

    Q_DISABLE_COPY(CDVDSubtitle)
};

} // namespace Vesk
