// SPDX-License-Identifier: LGPL-2.1-or-later
#pragma once

#include "vspbased/cveskobject.h"
#include "vspimportglobal.h"

#include <QtCore/QSize>
#include <QtCore/QString>

namespace AVBased {
class IImageConverter;
}

namespace Vesk {

class CImportContextPrivate;

/// Settings of all imports of the process.
///
/// Holds no lock: the host sets it before it opens an import and leaves it alone while one runs,
/// but for setConfigDir() as it says there.
class VSPIMPORT_EXPORT CImportContext : public CVeskObject
{
    Q_OBJECT

public:
    /// The one context. Made at the first call, at the latest by the plug-in's initialize(), and
    /// gone with the module; never deleted by the host.
    static CImportContext* instance();
    virtual ~CImportContext();

    /// Size of snapshots in pixels, 50 x 50 at first. Takes effect until the first snapshot of the
    /// process; after that the size stays what it was then. The engine makes pictures of 1 to 16384
    /// pixels a side: with another size imports take no snapshots, which is said once in the host's
    /// log, and the next size that is set is tried.
    QSize snapSize() const;
    void setSnapSize(const QSize& size);

    /// Folder that receives the snapshots. Made when needed; empty, as at first, is the working
    /// folder. Best an absolute path: image URLs are made of it as it stands.
    ///
    /// A picture is called after its source, and one that is there already is not taken again:
    ///
    /// - a media file's `NAME-TIME.jpg`: the file's name up to its first dot, and when it was
    ///   modified, in whole seconds since 1970;
    /// - a DVD chapter's `DISC/MOVIE-title-T-chapter-C.jpg`: the disc's name or, when it has none,
    ///   its source's, the title's movieName(), both numbers counted from 1;
    /// - a Blu-ray clip's `DISC/clip-N-file-FILE.jpg`: its place in CBDFile::snapClips(), counted
    ///   from 0, and the name of its stream file without suffix.
    ///
    /// Separators, control characters and leading dots in these texts become "_", and one that is
    /// too long for a name is cut and a code put behind it.
    ///
    /// So two sources can share a name: a/x.mp4 and b/x.mp4 of the same second, or two discs called
    /// "DVD". The second is then shown the first one's picture, in this import or in a later one. A
    /// host that cannot exclude this gives each source a folder of its own, or remembers beside the
    /// pictures which path, size and time each was made of, and imports a source whose picture is
    /// another's into another folder.
    ///
    /// The import's thread reads the folder when it stores a task's pictures and sets their URLs.
    /// So a slot that is connected to the reply with Qt::DirectConnection may set it between two
    /// tasks: at importFinished() for the first, at taskProcess(SnapDone) for the one that follows.
    QString configDir() const;
    void setConfigDir(const QString& dir);

    /// Suffixes of media files to import: patterns like "*.avi;" one after another, letter case
    /// ignored. Adding one takes it from the list of the forbidden ones.
    QString fileFormats() const;
    void setFileFormats(const QString& formats);
    void addFileFormat(const QString& format);

    /// Suffixes of media files to refuse, in the same form. Those in both lists are refused. Adding
    /// one takes it from the list of those to import.
    QString forbidFormats() const;
    void setForbidFormats(const QString& formats);
    void addForbidFormat(const QString& format);

    /// Whether the two lists apply at all. True at first.
    bool limitFileFormat() const;
    void setLimitFileFormat(bool limit);

    /// Whether the host supports DVDs. Discs are imported whatever this and the three below say.
    /// False at first.
    bool dvdSupport() const;
    void setDvdSupport(bool support);

    /// The same for scrambled DVDs, which CDVDInformation::isScrambled() marks.
    bool dvdSupportScrambled() const;
    void setDvdSupportScrambled(bool support);

    /// Whether the host supports Blu-ray discs.
    bool bdSupport() const;
    void setBdSupport(bool support);

    /// The same for scrambled Blu-ray discs.
    bool bdSupportScrambled() const;
    void setBdSupportScrambled(bool support);

    /// Whether media files under digital rights management are imported. False at first.
    bool drmSupport() const;
    void setDrmSupport(bool support);

    /// The engine's converter for snapshots, made at the first call with the snapSize() of that
    /// moment; null when the engine has none. Owned by the context. For the import's thread.
    AVBased::IImageConverter* imageConvert();

protected:
    /// With the defaults. There is one context, which instance() makes.
    CImportContext();

private:
    VESK_DECLARE_PRIVATE(CImportContext)
    Q_DISABLE_COPY(CImportContext)
};

} // namespace Vesk
