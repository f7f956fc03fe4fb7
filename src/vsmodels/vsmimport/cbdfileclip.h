// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

namespace Vesk {

class CBDFile;
class CBDFileClipPrivate;

/// A part of a Blu-ray stream file that titles and chapters play. Owned by its file. Hosts see it
/// as a QObject with the property "imageUrl".
class CBDFileClip : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString imageUrl READ imageUrl WRITE setImageUrl NOTIFY imageUrlChanged)

public:
    CBDFileClip(QObject* parent = 0);
    virtual ~CBDFileClip();

    /// Seconds from the start of the stream file.
    double timeStart() const;
    void setTimeStart(double seconds);
    double timeEnd() const;
    void setTimeEnd(double seconds);
    double duration() const;

    /// The owner. A new one gets the clip appended to its list; the clip does not leave the list of
    /// an earlier one.
    CBDFile* file() const;
    void setFile(CBDFile* file);

    QString imageUrl() const;
    void setImageUrl(const QString& url);

Q_SIGNALS:
    void imageUrlChanged();

private:
    CBDFileClipPrivate* d;

    Q_DISABLE_COPY(CBDFileClip)
};

} // namespace Vesk
