#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace velmora::report {

// The words of a command line, taken one after the other.
class Words {
public:
    explicit Words(const QStringList& words) : words_(words) {}
    bool AtEnd() const { return next_ == words_.size(); }
    const QString& Peek() const { return words_[next_]; }
    QString Take() { return words_[next_++]; }

private:
    const QStringList& words_;
    qsizetype next_ = 0;
};

// The options that may stand at one place of a command line, "--name", "--name VALUE" or "--name=VALUE".
class OptionTable {
public:
    using Apply = std::function<void(const QString& value)>;

    void AddFlag(const QString& name, bool& flag);
    // `apply` throws BadUsage for a value that it does not take.
    void AddValue(const QString& name, Apply apply);

    // Takes one option with its value when the next word is one of this table's. Throws BadUsage for a missing value,
    // or a value for an option that has none.
    bool TakeOption(Words& words) const;
    bool Has(const QString& name) const { return Find(name) != nullptr; }

private:
    struct Option {
        QString name;
        bool* flag = nullptr;
        Apply apply;
    };
    const Option* Find(const QString& name) const;

    std::vector<Option> options_;
};

} // namespace velmora::report
