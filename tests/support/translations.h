// The texts of the program, as its translations have them.
#pragma once

#include <QString>

#include <vector>

struct TranslationEntry
{
    QString context;
    QString source;
    QString translation;
    QString type; // empty when finished
};

// All entries of a .ts file, in its order; none when it cannot be read.
std::vector<TranslationEntry> readTranslations(const QString &path);
