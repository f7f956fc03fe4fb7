// SPDX-License-Identifier: GPL-2.0-or-later
//
// make-manual FOLDER SCHEMA
// Writes the manual pages and the completions of shells into FOLDER, from what the program itself
// reads its command line by and from the schema that its output is held against.
#include "completions.h"
#include "manualpages.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

#include <cstdio>

namespace {

bool write(const QString& path, const QByteArray& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::fputs("use: make-manual FOLDER SCHEMA\n", stderr);
        return 2;
    }
    const QString folder = QFile::decodeName(argv[1]) + QLatin1Char('/');
    QFile schemaFile(QFile::decodeName(argv[2]));
    const bool isOpen = schemaFile.open(QIODevice::ReadOnly);
    const QJsonObject schema = QJsonDocument::fromJson(schemaFile.readAll()).object();
    const bool isWritten = isOpen && !schema.isEmpty() &&
                           write(folder + QStringLiteral("vspimport.1"), programPage()) &&
                           write(folder + QStringLiteral("vspimport.5"), formatPage(schema)) &&
                           write(folder + QStringLiteral("vspimport.bash"), bashCompletion()) &&
                           write(folder + QStringLiteral("_vspimport"), zshCompletion()) &&
                           write(folder + QStringLiteral("vspimport.fish"), fishCompletion());
    if (!isWritten)
        std::fputs("make-manual: cannot read the schema or write the files\n", stderr);
    return isWritten ? 0 : 1;
}
