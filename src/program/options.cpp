// SPDX-License-Identifier: GPL-2.0-or-later
#include "options.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QStandardPaths>

namespace {

const char* const defaultFormats =
    "*.3g2;*.3gp;*.aac;*.ac3;*.aif;*.aiff;*.amr;*.ape;*.asf;*.au;*.avi;*.caf;*.divx;*.dts;*.dv;"
    "*.eac3;*.f4v;*.flac;*.flv;*.gif;*.gxf;*.h264;*.h265;*.hevc;*.ivf;*.m1v;*.m2t;*.m2ts;*.m2v;"
    "*.m4a;*.m4b;*.m4v;*.mka;*.mkv;*.mod;*.mov;*.mp2;*.mp3;*.mp4;*.mpa;*.mpc;*.mpeg;*.mpg;*.mpv;"
    "*.mts;*.mxf;*.nut;*.oga;*.ogg;*.ogm;*.ogv;*.opus;*.qt;*.ra;*.rm;*.rmvb;*.spx;*.tak;*.thd;"
    "*.tod;*.tp;*.trp;*.ts;*.tta;*.vob;*.voc;*.w64;*.wav;*.webm;*.wma;*.wmv;*.wtv;*.wv;*.y4m;";

/// Largest width and height of a snapshot.
const int largestSide = 16384;

void addImportOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Imports media files, folders, disc images, DVD and Blu-ray folders and DVD IFO files:\n"
        "describes what is in them and takes pictures of it."));
    parser.addPositionalArgument(QStringLiteral("PATH"), QStringLiteral("What to import."),
                                 QStringLiteral("PATH..."));
    parser.addOptions({
        {QStringLiteral("for"),
         QStringLiteral("What the sources are for: import, play or convert. May be repeated."),
         QStringLiteral("import|play|convert")},
        {QStringLiteral("config-dir"),
         QStringLiteral("Where the snapshots go. Default: vspimport/snapshots in your cache."),
         QStringLiteral("DIR")},
        {QStringLiteral("snap-size"), QStringLiteral("Size of the snapshots. Default: 320x180."),
         QStringLiteral("WxH")},
        {QStringLiteral("formats"),
         QStringLiteral("Media files to import, as in '*.avi;*.mp4;'. Default: the usual ones."),
         QStringLiteral("LIST")},
        {QStringLiteral("forbid"), QStringLiteral("Media files to refuse, in the same form."),
         QStringLiteral("LIST")},
        {QStringLiteral("all-files"), QStringLiteral("Try every file, whatever its suffix.")},
        {QStringLiteral("allow-drm"), QStringLiteral("Import copy-protected media files too.")},
        {QStringLiteral("jobs"),
         QStringLiteral("Engine processes at work at once. Default: as many as cores, 4 at most."),
         QStringLiteral("1-4")},
        {QStringLiteral("json"),
         QStringLiteral("Write what was found as JSON; - is standard output."),
         QStringLiteral("FILE")},
        {QStringLiteral("events"),
         QStringLiteral("Write each signal as it arrives, one JSON object a line.")},
        {QStringLiteral("report"),
         QStringLiteral("Write the errors, if there are any, to a binary report."),
         QStringLiteral("FILE")},
        {QStringLiteral("quiet"), QStringLiteral("No summary and no progress.")},
        {QStringLiteral("verbose"),
         QStringLiteral("Also the module's debug lines and the engine's messages.")},
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this text.")},
        {QStringLiteral("version"), QStringLiteral("Show the version.")},
    });
}

bool parsePurposes(const QStringList& purposes, Options& options, QString& error)
{
    for (const QString& purpose : purposes) {
        if (purpose == QLatin1String("import"))
            options.forImport = true;
        else if (purpose == QLatin1String("play"))
            options.forPlay = true;
        else if (purpose == QLatin1String("convert"))
            options.forConvert = true;
        else {
            error = QStringLiteral("--for takes import, play or convert, not '%1'").arg(purpose);
            return false;
        }
    }
    if (purposes.isEmpty())
        options.forImport = true;
    return true;
}

bool parseSnapSize(const QString& text, QSize& size, QString& error)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    const int width = match.captured(1).toInt();
    const int height = match.captured(2).toInt();
    if (!match.hasMatch() || width < 1 || height < 1 || width > largestSide ||
        height > largestSide) {
        error =
            QStringLiteral("--snap-size takes a size such as 320x180, up to %1 a side, not '%2'")
                .arg(QString::number(largestSide), text);
        return false;
    }
    size = QSize(width, height);
    return true;
}

/// A list of patterns without its last semicolon is meant all the same.
QString patternList(const QString& text)
{
    return text.isEmpty() || text.endsWith(QLatin1Char(';')) ? text : text + QLatin1Char(';');
}

QString defaultConfigDir()
{
    QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    if (QDir::isRelativePath(cache)) // XDG_CACHE_HOME counts only if it is absolute
        cache = QDir::homePath() + QStringLiteral("/.cache");
    return cache + QStringLiteral("/vspimport/snapshots");
}

bool parseJobs(const QString& text, int& jobs, QString& error)
{
    jobs = text.toInt();
    if (jobs >= 1 && jobs <= 4)
        return true;
    error = QStringLiteral("--jobs takes a number from 1 to 4, not '%1'").arg(text);
    return false;
}

bool checkNames(const QCommandLineParser& parser, QString& error)
{
    for (const char* name : {"config-dir", "json", "report"}) {
        if (!parser.isSet(QLatin1String(name)))
            continue;
        const QString value = parser.value(QLatin1String(name));
        if (value.isEmpty())
            error = QStringLiteral("--%1 needs a name").arg(QLatin1String(name));
        else if (value.contains(QChar(QChar::ReplacementCharacter)))
            error = QStringLiteral("the name for --%1 is no valid text").arg(QLatin1String(name));
    }
    return error.isEmpty();
}

bool readValues(const QCommandLineParser& parser, Options& options, QString& error)
{
    if (!parsePurposes(parser.values(QStringLiteral("for")), options, error))
        return false;
    const QString snapSize = parser.value(QStringLiteral("snap-size"));
    if (parser.isSet(QStringLiteral("snap-size")) &&
        !parseSnapSize(snapSize, options.snapSize, error))
        return false;
    if (parser.isSet(QStringLiteral("jobs")) &&
        !parseJobs(parser.value(QStringLiteral("jobs")), options.jobs, error))
        return false;
    if (!checkNames(parser, error))
        return false;
    options.configDir = parser.isSet(QStringLiteral("config-dir"))
                            ? parser.value(QStringLiteral("config-dir"))
                            : defaultConfigDir();
    options.formats = parser.isSet(QStringLiteral("formats"))
                          ? patternList(parser.value(QStringLiteral("formats")))
                          : QString::fromLatin1(defaultFormats);
    options.forbidden = patternList(parser.value(QStringLiteral("forbid")));
    options.allFiles = parser.isSet(QStringLiteral("all-files"));
    options.allowDrm = parser.isSet(QStringLiteral("allow-drm"));
    options.jsonFile = parser.value(QStringLiteral("json"));
    options.events = parser.isSet(QStringLiteral("events"));
    options.reportFile = parser.value(QStringLiteral("report"));
    options.quiet = parser.isSet(QStringLiteral("quiet"));
    options.verbose = parser.isSet(QStringLiteral("verbose"));
    return true;
}

bool parseImport(const QStringList& arguments, const QHash<QString, QByteArray>& bytes,
                 Options& options, QString& error)
{
    QCommandLineParser parser;
    addImportOptions(parser);
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("version"))) {
        options.command = parser.isSet(QStringLiteral("help")) ? Options::Command::Help
                                                               : Options::Command::Version;
        return true;
    }
    if (!readValues(parser, options, error))
        return false;
    for (const QString& path : parser.positionalArguments())
        options.paths.append(bytes.value(path));
    if (options.paths.isEmpty())
        error = QStringLiteral("no PATH is given; see --help");
    return !options.paths.isEmpty();
}

bool parseReport(const QStringList& arguments, Options& options, QString& error)
{
    QCommandLineParser parser;
    parser.addOptions({{QStringLiteral("json"), QStringLiteral("As JSON.")},
                       {{QStringLiteral("h"), QStringLiteral("help")}, QString()}});
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        options.command = Options::Command::Help;
        return true;
    }
    const QStringList files = parser.positionalArguments().mid(1);
    if (files.size() != 1) {
        error = QStringLiteral("report takes one FILE");
        return false;
    }
    options.command = Options::Command::Report;
    options.reportToRead = files.first();
    options.reportAsJson = parser.isSet(QStringLiteral("json"));
    return true;
}

} // namespace

bool parseOptions(int argc, char** argv, Options& options, QString& error)
{
    QStringList arguments;
    QHash<QString, QByteArray> bytes; // names that are no valid text keep theirs
    for (int i = 0; i < argc; ++i) {
        const QByteArray raw(argv[i]);
        arguments.append(QFile::decodeName(raw));
        bytes.insert(arguments.last(), raw);
    }
    if (arguments.value(1) == QLatin1String("report"))
        return parseReport(arguments, options, error);
    return parseImport(arguments, bytes, options, error);
}

QString helpText()
{
    QCommandLineParser parser;
    addImportOptions(parser);
    return parser.helpText() +
           QStringLiteral(
               "\nvspimport report FILE [--json]\n"
               "  Show a saved error report, one line an error.\n\n"
               "Exit status: 0 all was imported, 1 something could not be, 2 the arguments\n"
               "cannot be used, 130 stopped by Ctrl-C.\n");
}
