// SPDX-License-Identifier: LGPL-2.1-or-later
#include "cimportcontext.h"

#include "engineaccess.h"
#include "vspavbased/iavpicture.h"
#include "vspavbased/iimageconverter.h"

namespace Vesk {

class CImportContextPrivate : public CVeskObjectPrivate
{
public:
    ~CImportContextPrivate()
    {
        if (converter)
            EngineRelease()(converter);
        converter = nullptr;
    }

    /// Once a size: without it an import would end without pictures and without a word.
    void sayRefusedSize()
    {
        if (converter || refusedSizeIsSaid)
            return;
        refusedSizeIsSaid = true;
        const QString text = QString::fromLatin1("the engine makes no pictures of %1 x %2 pixels");
        CVeskException(ErrorCodeUnknown, text.arg(snapWidth).arg(snapHeight),
                       QString::fromLocal8Bit(__FILE__), __LINE__)
            .flush();
    }

    AVBased::IImageConverter* converter = nullptr;
    int snapWidth = 50;
    int snapHeight = 50;
    bool refusedSizeIsSaid = false;
    QString configDir;
    QString fileFormats;
    QString forbidFormats;
    bool limitFileFormat = true;
    bool dvdSupport = false;
    bool dvdSupportScrambled = false;
    bool bdSupport = false;
    bool bdSupportScrambled = false;
    bool drmSupport = false;

    VESK_DECLARE_PUBLIC(CImportContext)
};

namespace {

/// Puts `format` into `list`, unless it is there, and takes it out of `other`.
void moveFormat(const QString& format, QString& list, QString& other)
{
    if (!list.contains(format, Qt::CaseInsensitive))
        list.append(format);
    if (other.contains(format, Qt::CaseInsensitive))
        other.remove(format, Qt::CaseInsensitive);
}

template <typename T>
void assignIfDifferent(T& field, const T& value)
{
    if (field != value)
        field = value;
}

} // namespace

CImportContext* CImportContext::instance()
{
    static CImportContext context;
    return &context;
}

CImportContext::CImportContext()
    : CVeskObject(*new CImportContextPrivate, 0)
{}

CImportContext::~CImportContext() {}

QSize CImportContext::snapSize() const
{
    return QSize(d_func()->snapWidth, d_func()->snapHeight);
}

void CImportContext::setSnapSize(const QSize& size)
{
    d_func()->snapWidth = size.width();
    d_func()->snapHeight = size.height();
    d_func()->refusedSizeIsSaid = false;
}

QString CImportContext::configDir() const
{
    return d_func()->configDir;
}

void CImportContext::setConfigDir(const QString& dir)
{
    d_func()->configDir = dir;
}

QString CImportContext::fileFormats() const
{
    return d_func()->fileFormats;
}

void CImportContext::setFileFormats(const QString& formats)
{
    assignIfDifferent(d_func()->fileFormats, formats);
}

void CImportContext::addFileFormat(const QString& format)
{
    moveFormat(format, d_func()->fileFormats, d_func()->forbidFormats);
}

QString CImportContext::forbidFormats() const
{
    return d_func()->forbidFormats;
}

void CImportContext::setForbidFormats(const QString& formats)
{
    assignIfDifferent(d_func()->forbidFormats, formats);
}

void CImportContext::addForbidFormat(const QString& format)
{
    moveFormat(format, d_func()->forbidFormats, d_func()->fileFormats);
}

bool CImportContext::limitFileFormat() const
{
    return d_func()->limitFileFormat;
}

void CImportContext::setLimitFileFormat(bool limit)
{
    assignIfDifferent(d_func()->limitFileFormat, limit);
}

bool CImportContext::dvdSupport() const
{
    return d_func()->dvdSupport;
}

void CImportContext::setDvdSupport(bool support)
{
    assignIfDifferent(d_func()->dvdSupport, support);
}

bool CImportContext::dvdSupportScrambled() const
{
    return d_func()->dvdSupportScrambled;
}

void CImportContext::setDvdSupportScrambled(bool support)
{
    assignIfDifferent(d_func()->dvdSupportScrambled, support);
}

bool CImportContext::bdSupport() const
{
    return d_func()->bdSupport;
}

void CImportContext::setBdSupport(bool support)
{
    assignIfDifferent(d_func()->bdSupport, support);
}

bool CImportContext::bdSupportScrambled() const
{
    return d_func()->bdSupportScrambled;
}

void CImportContext::setBdSupportScrambled(bool support)
{
    assignIfDifferent(d_func()->bdSupportScrambled, support);
}

bool CImportContext::drmSupport() const
{
    return d_func()->drmSupport;
}

void CImportContext::setDrmSupport(bool support)
{
    assignIfDifferent(d_func()->drmSupport, support);
}

AVBased::IImageConverter* CImportContext::imageConvert()
{
    CImportContextPrivate* d = d_func();
    if (!d->converter) {
        d->converter = engineWrapper()->CreateImageConverterEx(
            AVBased::PixelFormatArgb32, static_cast<unsigned int>(d->snapWidth),
            static_cast<unsigned int>(d->snapHeight), 0);
        d->sayRefusedSize();
    }
    return d->converter;
}

} // namespace Vesk
