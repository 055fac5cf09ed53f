#pragma once

// A reader of RFC 4180 files for the tests: records of fields, quoted
// fields with doubled quotes and line breaks in them, every record ended by
// CR LF. Anything else is an error, with where it was found.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct CsvFile {
    QList<QStringList> records;
    QString error; // "" when the whole file reads
};

inline CsvFile readCsv(const QByteArray &bytes)
{
    CsvFile file;
    QStringList record;
    QByteArray field;
    qsizetype i = 0;
    const qsizetype n = bytes.size();
    auto fail = [&](const char *what) {
        file.error = QStringLiteral("%1 at byte %2").arg(QLatin1String(what)).arg(i);
        return file;
    };
    while (i < n) {
        if (bytes[i] == '"') {
            ++i;
            while (true) {
                if (i >= n)
                    return fail("unterminated quoted field");
                if (bytes[i] == '"') {
                    if (i + 1 < n && bytes[i + 1] == '"') {
                        field.append('"');
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                field.append(bytes[i++]);
            }
        } else {
            while (i < n && bytes[i] != ',' && bytes[i] != '\r' && bytes[i] != '\n') {
                if (bytes[i] == '"')
                    return fail("quote inside an unquoted field");
                field.append(bytes[i++]);
            }
        }
        record.append(QString::fromUtf8(field));
        field.clear();
        if (i < n && bytes[i] == ',') {
            ++i;
            continue;
        }
        if (i + 1 < n && bytes[i] == '\r' && bytes[i + 1] == '\n') {
            i += 2;
            file.records.append(record);
            record.clear();
            continue;
        }
        return fail("a record that does not end in CR LF");
    }
    if (!record.isEmpty())
        return fail("a last record without CR LF");
    return file;
}
