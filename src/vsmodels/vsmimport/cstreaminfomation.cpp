// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cstreaminfomation.h"

namespace Vesk {

class CStreamInfomationPrivate
{
public:
    CStreamInfomation::StreamType streamType = CStreamInfomation::StreamUnknown;
    QString streamName;
    int streamId = -1;
    QString language;
    QString codecName;
    double duration = 0.0;
    int bitrate = 0;
    QString fourcc;
    int height = 0;
    int width = 0;
    QString framerate;
    quint64 rawFramerate = 0;
    QString aspectRatio;
    unsigned int rawAspectRatio = 0;
    int channels = 0;
    quint64 channelLayout = 0;
    int samplerate = 0;
    bool checked = false;
};

CStreamInfomation::CStreamInfomation(QObject* parent)
    : QObject(parent)
    , d(new CStreamInfomationPrivate)
{}

CStreamInfomation::~CStreamInfomation()
{
    delete d;
}

CStreamInfomation::StreamType CStreamInfomation::streamType() const
{
    return d->streamType;
}

void CStreamInfomation::setStreamType(StreamType type)
{
    d->streamType = type;
}

QString CStreamInfomation::streamName() const
{
    return d->streamName;
}

void CStreamInfomation::setStreamName(const QString& name)
{
    d->streamName = name;
}

int CStreamInfomation::streamId() const
{
    return d->streamId;
}

void CStreamInfomation::setStreamId(int id)
{
    d->streamId = id;
}

QString CStreamInfomation::language() const
{
    return d->language;
}

void CStreamInfomation::setLanguage(const QString& language)
{
    d->language = language;
}

QString CStreamInfomation::codecName() const
{
    return d->codecName;
}

void CStreamInfomation::setCodecName(const QString& name)
{
    d->codecName = name;
}

double CStreamInfomation::duration() const
{
    return d->duration;
}

void CStreamInfomation::setDuration(double seconds)
{
    d->duration = seconds;
}

int CStreamInfomation::bitrate() const
{
    return d->bitrate;
}

void CStreamInfomation::setBitrate(int bitsPerSecond)
{
    d->bitrate = bitsPerSecond;
}

QString CStreamInfomation::fourcc() const
{
    return d->fourcc;
}

void CStreamInfomation::setFourcc(const QString& fourcc)
{
    d->fourcc = fourcc;
}

int CStreamInfomation::height() const
{
    return d->height;
}

void CStreamInfomation::setHeight(int pixels)
{
    d->height = pixels;
}

int CStreamInfomation::width() const
{
    return d->width;
}

void CStreamInfomation::setWidth(int pixels)
{
    d->width = pixels;
}

QString CStreamInfomation::framerate() const
{
    return d->framerate;
}

void CStreamInfomation::setFramerate(const QString& text)
{
    d->framerate = text;
}

quint64 CStreamInfomation::rawFramerate() const
{
    return d->rawFramerate;
}

void CStreamInfomation::setRawFramerate(quint64 packed)
{
    d->rawFramerate = packed;
}

QString CStreamInfomation::aspectRatio() const
{
    return d->aspectRatio;
}

void CStreamInfomation::setAspectRatio(const QString& text)
{
    d->aspectRatio = text;
}

unsigned int CStreamInfomation::rawAspectRatio() const
{
    return d->rawAspectRatio;
}

void CStreamInfomation::setRawAspectRatio(unsigned int packed)
{
    d->rawAspectRatio = packed;
}

int CStreamInfomation::channels() const
{
    return d->channels;
}

void CStreamInfomation::setChannels(int count)
{
    d->channels = count;
}

quint64 CStreamInfomation::channelLayout() const
{
    return d->channelLayout;
}

void CStreamInfomation::setChannelLayout(quint64 mask)
{
    d->channelLayout = mask;
}

int CStreamInfomation::samplerate() const
{
    return d->samplerate;
}

void CStreamInfomation::setSamplerate(int hertz)
{
    d->samplerate = hertz;
}

bool CStreamInfomation::checked() const
{
    return d->checked;
}

void CStreamInfomation::setChecked(bool checked)
{
    d->checked = checked;
}

} // namespace Vesk
