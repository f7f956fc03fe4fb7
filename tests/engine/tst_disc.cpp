// SPDX-License-Identifier: GPL-2.0-or-later
//
// Files in disc images, whatever the disc.
#include "disc/discfiles.h"
#include "files.h"
#include "files/files.h"
#include "refusal.h"
#include "udfwriter.h"

#include <fcntl.h>
#include <udfread/udfread.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using engine::DiscFiles;

namespace {

QByteArray toQt(const engine::Bytes& bytes)
{
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), int(bytes.size()));
}

/// The file as libudfread reads it.
QByteArray readByLibrary(udfread* udf, const char* path, int size)
{
    QByteArray bytes(size, 0);
    UDFFILE* file = udfread_file_open(udf, path);
    bytes.truncate(int(udfread_file_read(file, bytes.data(), size_t(size))));
    udfread_file_close(file);
    return bytes;
}

} // namespace

/// Each file is one that is there, and gives nothing but errors.
class BrokenFiles final : public engine::Files
{
public:
    explicit BrokenFiles(const QString& file)
        : m_file(file.toUtf8())
    {}
    engine::FileKind kindOf(const std::string&) override { return engine::FileKind::file; }
    wire::Descriptor open(const std::string&) override
    {
        return wire::Descriptor(::open(m_file.constData(), O_WRONLY | O_CLOEXEC));
    }
    std::vector<engine::FolderEntry> list(const std::string&, std::size_t) override { return {}; }

private:
    QByteArray m_file;
};

class DiscTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// Images of one folder: with many files, files of all sizes, and names of narrow and wide
    /// letters.
    void initTestCase()
    {
        for (const int size : {0, 1, 1000, 2048, 100000, 3000000})
            writeFile(path("disc/sizes/%1.bin").arg(size), randomBytes(size));
        for (int i = 0; i < 300; ++i)
            writeFile(path("disc/many/%1.bin").arg(i, 5, 10, QChar('0')), randomBytes(i));
        writeFile(path(QString::fromUtf8("disc/Größe/Maß.txt")), "narrow");
        writeFile(path(QString::fromUtf8("disc/Москва/a/b/Фильм.txt")), "wide");
        writeUdfImage(path("disc"), path("250.iso"), "VOLUME");
        QCOMPARE(
            QProcess::execute("genisoimage", {"-quiet", "-udf", "-input-charset", "utf-8", "-V",
                                              "VOLUME", "-o", path("102.iso"), path("disc")}),
            0);
    }

    /// A bad disk is told from bad contents.
    void tellsUnreadableFiles()
    {
        static BrokenFiles broken(path("250.iso"));
        engine::Files& whole = engine::files();
        engine::takeRefusal();
        engine::useFiles(broken);
        const bool isOpened = DiscFiles::open("/disc.iso") != nullptr;
        engine::useFiles(whole);
        QVERIFY(!isOpened);
        QCOMPARE(engine::takeRefusal(), AVBased::RefusedUnreadable);
    }

    /// As they were written, and as libudfread reads them.
    void readsImages()
    {
        const QByteArray whole = randomBytes(3000000);
        for (const char* image : {"102.iso", "250.iso"}) {
            const auto files = DiscFiles::open(path(image).toStdString());
            const std::unique_ptr<udfread, decltype(&udfread_close)> udf(udfread_init(),
                                                                         udfread_close);
            QVERIFY(files && udfread_open(udf.get(), qPrintable(path(image))) == 0);
            QCOMPARE(files->volumeName(), std::string("VOLUME"));
            QCOMPARE(files->volumeName(), std::string(udfread_get_volume_id(udf.get())));
            QVERIFY(readByLibrary(udf.get(), "/sizes/3000000.bin", 3000000) == whole);

            QStringList found;
            for (const char* folder : {u8"Größe/", "many/", "sizes/", u8"Москва/a/b/"}) {
                QVERIFY(files->hasFolder(folder) && !files->hasFile(folder));
                for (const std::string& name : files->fileNames(folder, {}))
                    found << QString(folder) + QString::fromStdString(name);
            }
            QCOMPARE(found, filesBelow(path("disc")));
            QCOMPARE(found.size(), 308);
            for (const QString& name : found) {
                const auto bytes = files->read(name.toStdString());
                QVERIFY2(bytes && toQt(*bytes) == contentOf(path("disc/" + name)),
                         qPrintable(name));
            }

            const auto file = files->openFile("sizes/3000000.bin");
            QVERIFY(file && file->size() == 3000000);
            QVERIFY(!files->openFile("sizes") && !files->openFile("sizes/2.bin"));
            for (const int at : {0, 4095, 4096, 65530, 2999000, 3000000}) {
                engine::Bytes bytes(5000);
                bytes.resize(file->read(quint64(at), bytes.data(), bytes.size()));
                QCOMPARE(toQt(bytes), whole.mid(at, 5000));
            }
        }
    }

    /// Names are what the standard makes of them. A folder of several sectors, and a file of
    /// several stretches, which are made from one by hand.
    void readsIso9660()
    {
        QCOMPARE(QProcess::execute("genisoimage", {"-quiet", "-V", "VOLUME", "-o", path("9660.iso"),
                                                   path("disc/many"), path("disc/sizes")}),
                 0);
        const auto files = DiscFiles::open(path("9660.iso").toStdString());
        QVERIFY(files);
        QCOMPARE(files->volumeName(), std::string("VOLUME"));
        QCOMPARE(files->fileNames({}, ".bin").size(), size_t(306));
        for (int i = 0; i < 300; ++i) {
            const auto bytes =
                files->read(QString("%1.BIN").arg(i, 5, 10, QChar('0')).toStdString());
            QVERIFY(bytes && toQt(*bytes) == randomBytes(i));
        }
        const auto bytes = files->read("3000000.BIN");
        QVERIFY(bytes && toQt(*bytes) == randomBytes(3000000));

        QByteArray image = contentOf(path("9660.iso"));
        const int first = image.indexOf("00010.BIN;1") - 33;
        image[first + 25] = char(0x80);
        const auto stretches =
            DiscFiles::open(writeFile(path("stretches.iso"), image).toStdString());
        const auto joined = stretches ? stretches->read("00010.BIN") : std::nullopt;
        QVERIFY(joined && toQt(*joined) == randomBytes(10) + randomBytes(11));
    }

    void usesTheCopies()
    {
        const auto isReadableWithout = [this](const QList<int>& sectors) {
            QByteArray image = contentOf(path("250.iso"));
            for (const int sector : sectors)
                image.replace(sector * 2048, 2048, randomBytes(2048));
            const auto files = DiscFiles::open(writeFile(path("damaged.iso"), image).toStdString());
            return files && files->hasFile("sizes/100000.bin");
        };
        QVERIFY(isReadableWithout({256})); // the first anchor
        QVERIFY(isReadableWithout({34}));  // the description of the volume
        QVERIFY(isReadableWithout({288})); // the metadata file
        QVERIFY(!isReadableWithout({288, 289}));
        QVERIFY(!isReadableWithout({34, 50}));
    }

    /// Images that have both file systems can be read by the other.
    void usesIso9660WithoutARootOfUdf()
    {
        QByteArray image = contentOf(path("102.iso"));
        const auto describesFolder = [&image](int sector) {
            return image.mid(sector * 2048, 2) == QByteArray("\x05\x01") &&
                   image.at(sector * 2048 + 27) == 4;
        };
        int root = 257;
        while (!describesFolder(root))
            ++root;
        image.replace(root * 2048, 2048, randomBytes(2048));
        const auto files = DiscFiles::open(writeFile(path("rootless.iso"), image).toStdString());
        QVERIFY(files && files->hasFile("SIZES/100000.BIN"));
    }

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(DiscTest)
#include "tst_disc.moc"
