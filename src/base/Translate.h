#pragma once

#include <QHash>
#include <QString>

namespace velmora {

// Translations by English text. Keys compare without regard to letter case.
class TranslationDictionary {
public:
    void Add(const QString& english, const QString& translated);
    void Clear() { texts_.clear(); }
    qsizetype Size() const { return texts_.size(); }
    // The translation of `english`, or `english` itself when there is none.
    QString Lookup(const QString& english) const;

private:
    QHash<QString, QString> texts_;
};

// The current program's translation of `english`; the text itself when it has none or there is no program.
QString Translate(const QString& english);

} // namespace velmora
