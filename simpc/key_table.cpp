#include "simpc/key_table.h"

QString inlineText(const KeyRows &rows)
{
    QStringList texts;
    for (const KeyRow &row : rows) {
        const QString otherwise = row.otherwise.isEmpty() ? QStringLiteral("empty") : row.otherwise;
        const QString meaning = row.meaning.isEmpty() ? QString() : "; " + row.meaning;
        texts.append(QStringLiteral("`%1` (%2; %3%4)").arg(row.key, row.type, otherwise, meaning));
    }
    return texts.join(QStringLiteral(", "));
}
