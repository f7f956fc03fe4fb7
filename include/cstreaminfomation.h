// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspimportglobal.h"

#include <QtCore/QObject>
#include <QtCore/QString>

namespace Vesk {

class CStreamInfomationPrivate;

/// One elementary stream of a movie. Owned by its CMovieInfomation. Setters store and emit nothing.
class VSPIMPORT_EXPORT CStreamInfomation : public QObject
{
    Q_OBJECT
    Q_ENUMS(StreamType)
    Q_PROPERTY(StreamType streamType READ streamType WRITE setStreamType NOTIFY nullChanged)
    Q_PROPERTY(QString streamName READ streamName WRITE setStreamName NOTIFY nullChanged)
    Q_PROPERTY(int streamId READ streamId WRITE setStreamId NOTIFY nullChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY nullChanged)
    Q_PROPERTY(QString codecName READ codecName WRITE setCodecName NOTIFY nullChanged)
    Q_PROPERTY(double duration READ duration WRITE setDuration NOTIFY nullChanged)
    Q_PROPERTY(int bitrate READ bitrate WRITE setBitrate NOTIFY nullChanged)
    Q_PROPERTY(QString fourcc READ fourcc WRITE setFourcc NOTIFY nullChanged)
    Q_PROPERTY(int height READ height WRITE setHeight NOTIFY nullChanged)
    Q_PROPERTY(int width READ width WRITE setWidth NOTIFY nullChanged)
    Q_PROPERTY(QString framerate READ framerate WRITE setFramerate NOTIFY nullChanged)
    Q_PROPERTY(quint64 rawFramerate READ rawFramerate WRITE setRawFramerate NOTIFY nullChanged)
    Q_PROPERTY(QString aspectRatio READ aspectRatio WRITE setAspectRatio NOTIFY nullChanged)
    Q_PROPERTY(
        quint64 rawAspectRatio READ rawAspectRatio WRITE setRawAspectRatio NOTIFY nullChanged)
    Q_PROPERTY(int channels READ channels WRITE setChannels NOTIFY nullChanged)
    Q_PROPERTY(quint64 channelLayout READ channelLayout WRITE setChannelLayout NOTIFY nullChanged)
    Q_PROPERTY(int samplerate READ samplerate WRITE setSamplerate NOTIFY nullChanged)
    Q_PROPERTY(bool checked READ checked WRITE setChecked NOTIFY nullChanged)

public:
    /// What a stream carries.
    enum StreamType
    {
        StreamUnknown = 0, ///< data, attached pictures and what the engine does not know
        StreamVideo = 1,   ///< moving pictures
        StreamAudio = 2,   ///< sound
        StreamSubtitle = 3 ///< subtitles, as text or as pictures
    };

    /// Of which nothing is known.
    CStreamInfomation(QObject* parent = 0);
    virtual ~CStreamInfomation();

    /// What the stream carries.
    StreamType streamType() const;
    void setStreamType(StreamType type);

    /// The stream's title; often empty.
    QString streamName() const;
    void setStreamName(const QString& name);

    /// The engine's identifier; -1 means none.
    int streamId() const;
    void setStreamId(int id);

    /// Code of two or three letters, or empty.
    QString language() const;
    void setLanguage(const QString& language);

    /// Short lower-case name of the codec: "h264", "ac3"; empty when unknown.
    QString codecName() const;
    void setCodecName(const QString& name);

    /// Seconds; 0 when unknown.
    double duration() const;
    void setDuration(double seconds);

    /// Bits a second; 0 when unknown.
    int bitrate() const;
    void setBitrate(int bitsPerSecond);

    /// Four characters, video streams only.
    QString fourcc() const;
    void setFourcc(const QString& fourcc);

    /// Pixels, as coded: before rotation and pixel aspect ratio.
    int height() const;
    void setHeight(int pixels);
    int width() const;
    void setWidth(int pixels);

    /// Frame rate as a text and as the engine packs it (see CBasicUtils); empty and 0 when unknown.
    QString framerate() const;
    void setFramerate(const QString& text);
    quint64 rawFramerate() const;
    void setRawFramerate(quint64 packed);

    /// Display aspect ratio as a text and as the engine packs it; empty and 0 when unknown. The
    /// property is wider than the 32 bits that are kept.
    QString aspectRatio() const;
    void setAspectRatio(const QString& text);
    unsigned int rawAspectRatio() const;
    void setRawAspectRatio(unsigned int packed);

    /// Channels of audio; 0 when unknown.
    int channels() const;
    void setChannels(int count);

    /// A bit a loudspeaker; 0 when unknown.
    quint64 channelLayout() const;
    void setChannelLayout(quint64 mask);

    /// Samples a second of audio; 0 when unknown.
    int samplerate() const;
    void setSamplerate(int hertz);

    /// For the host's own use; an import never sets it.
    bool checked() const;
    void setChecked(bool checked);

Q_SIGNALS:
    void nullChanged(); ///< never emitted

private:
    CStreamInfomationPrivate* d;

    Q_DISABLE_COPY(CStreamInfomation)
};

} // namespace Vesk
