#include "core/stats/outchart_data.h"

#include <QFile>
#include <QStringList>

namespace tavrix {

QList<ChartRow> parseChartData(const QString &text)
{
    QList<ChartRow> rows;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &rawLine : lines) {
        const QString line = rawLine.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList fields = line.split(QLatin1Char(';'));
        bool isNumber = false;
        const int points = fields.value(0).trimmed().toInt(&isNumber);
        if (!isNumber)
            continue;
        rows.append({points, fields.value(1).trimmed(), fields.value(2).trimmed()});
    }
    return rows;
}

QList<ChartRow> bundledChartRows()
{
    QFile file(QStringLiteral(":/checkout_chart.txt"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return parseChartData(QString::fromUtf8(file.readAll()));
}

} // namespace tavrix
