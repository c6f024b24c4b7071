#include "demo/Persons.h"

#include "demo/WordFile.h"

#include <QSet>

namespace velmora::demo {

namespace {

struct Origin {
    int share = 0;
    QStringList firstNames;
    QStringList lastNames;
};

// Pairs of names, each once.
class Names {
public:
    explicit Names(Random& random) : random_(random) {
        const WordFile words = WordFile::Load(QStringLiteral("people.txt"));
        for (const QStringList& names : words.Rows(QStringLiteral("always"))) {
            always_.push_back({.lastName = names[0], .firstName = names[1], .organization = {}});
            taken_.insert(Key(always_.back()));
        }
        for (const QString& section : words.Sections()) {
            if (section == QLatin1String("always")) {
                continue;
            }
            Origin origin;
            origin.share = section.section(u' ', -1).toInt();
            for (const QString& line : words.Entries(section)) {
                QStringList names = line.section(u':', 1).trimmed().split(QStringLiteral(", "));
                (line.startsWith(QLatin1String("first")) ? origin.firstNames : origin.lastNames) = std::move(names);
            }
            shares_ += origin.share;
            origins_.push_back(std::move(origin));
        }
    }

    // The next person's names; the organization is left empty.
    Person Next() {
        for (int attempt = 0;; ++attempt) {
            Person person = Draw();
            if (attempt >= 3 || random_.Percent(2)) {
                person.firstName += QStringLiteral(" %1.").arg(QChar(u'A' + random_.Below(23)));
            }
            const QString key = Key(person);
            if (!taken_.contains(key)) {
                taken_.insert(key);
                return person;
            }
        }
    }

    // Persons that every site has.
    const std::vector<Person>& Always() const { return always_; }

private:
    static QString Key(const Person& person) { return (person.lastName + u'\n' + person.firstName).toLower(); }

    const Origin& DrawOrigin() {
        int left = random_.Below(shares_);
        for (const Origin& origin : origins_) {
            left -= origin.share;
            if (left < 0) {
                return origin;
            }
        }
        return origins_.back();
    }

    Person Draw() {
        const Origin& origin = DrawOrigin();
        // People marry, move and name their children as they like.
        const Origin& firstNames = random_.Percent(12) ? DrawOrigin() : origin;
        Person person;
        person.lastName = random_.Pick(origin.lastNames);
        person.firstName = random_.Pick(firstNames.firstNames);
        if (random_.Percent(3)) {
            const QString& second = random_.Pick(DrawOrigin().lastNames);
            if (!second.contains(u' ') && second != person.lastName) {
                person.lastName += u'-' + second;
            }
        }
        return person;
    }

    Random& random_;
    std::vector<Origin> origins_;
    int shares_ = 0;
    std::vector<Person> always_;
    QSet<QString> taken_;
};

// How colleagues call somebody, in double quotes behind the first name.
void AddNickname(Person& person, Random& random) {
    static constexpr const char* nicknames[] = {"Bob",   "Kit", "Mac", "Ace", "Teddy",
                                                "Sunny", "JJ",  "Doc", "Pip", "Max"};
    if (person.firstName.contains(u'.')) {
        return;
    }
    const auto index = static_cast<size_t>(random.Below(static_cast<int>(std::size(nicknames))));
    person.firstName += QStringLiteral(" \"%1\"").arg(QLatin1String(nicknames[index]));
}

// One person's row.
class PersonWriter {
public:
    PersonWriter(const std::vector<Person>& persons, const std::vector<Asset>& assets, Random random, RowSink& sink)
        : persons_(persons), assets_(assets), random_(random), sink_(sink) {
        for (size_t n = 0; n < assets.size(); ++n) {
            if (assets[n].kind == AssetKind::Office || assets[n].kind == AssetKind::Desk) {
                places_.push_back(static_cast<int>(n));
            }
        }
        extension_ = persons.size() > 5000 ? 40001 : 5001;
    }

    void Write(const Person& person, int number) {
        const int place = person.office >= 0 ? person.office : random_.Pick(places_);
        const bool elsewhere = random_.Percent(4);
        std::array<QString, 3> areas = AreasOf(Place(elsewhere ? random_.Pick(places_) : place));
        const QString extension = QString::number(extension_ + number);
        const bool hasSecretary = random_.Percent(30);
        const Person& secretary = persons_[static_cast<size_t>(random_.Below(SecretaryCount()))];
        const bool park = random_.Percent(20);
        sink_.Add(
            {Value(person.lastName), Value(person.firstName), SpaceType(person, place), Value(areas[0]),
             Sometimes(96, areas[1]), Sometimes(90, areas[2]), Sometimes(97, QStringLiteral("01632 49 ") + extension),
             Sometimes(95, extension), Storage(), hasSecretary ? Value(secretary.lastName) : Value(),
             hasSecretary ? Value(secretary.firstName) : Value(),
             Value(QStringLiteral("K-%1").arg(number + 1, 5, 10, QLatin1Char('0'))),
             Value(QString::number(4100 + random_.Below(24) * 10)),
             park ? Value(QStringLiteral("P%1-%2").arg(1 + random_.Below(3)).arg(1 + random_.Below(240))) : Value()});
    }

private:
    const Asset& Place(int index) const { return assets_[static_cast<size_t>(index)]; }
    int SecretaryCount() const { return static_cast<int>(persons_.size()) / 15; }

    Value Sometimes(int percent, const QString& text) {
        return random_.Percent(percent) && !text.isEmpty() ? Value(text) : Value();
    }

    // What the person should occupy. Some are wrong and some are missing.
    Value SpaceType(const Person& person, int place) {
        if (random_.Percent(2)) {
            return {};
        }
        if (random_.Percent(4)) {
            return QStringLiteral("Lab work");
        }
        return person.office >= 0 || Place(place).kind == AssetKind::Office ? QStringLiteral("Office")
                                                                            : QStringLiteral("Desk");
    }

    Value Storage() {
        if (!random_.Percent(35)) {
            return {};
        }
        if (random_.Percent(60)) {
            return QStringLiteral("Locker %1").arg(1 + random_.Below(480));
        }
        return QStringLiteral("Cellar %1, shelf %2").arg(QChar(u'A' + random_.Below(6))).arg(1 + random_.Below(40));
    }

    const std::vector<Person>& persons_;
    const std::vector<Asset>& assets_;
    Random random_;
    RowSink& sink_;
    std::vector<int> places_;
    int extension_ = 0;
};

} // namespace

Staff MakeStaff(const Scale& scale, Random random) {
    const QStringList departments =
        WordFile::Load(QStringLiteral("organizations.txt")).Entries(QStringLiteral("departments"));
    Names names(random);
    Staff staff;
    for (int n = 0; n < scale.persons; ++n) {
        // Those of every site stand between the others.
        const size_t always = static_cast<size_t>(n / 50);
        Person person = n % 50 == 49 && always < names.Always().size() ? names.Always()[always] : names.Next();
        // Half the staff works in the first departments of the list.
        person.organization = random.Percent(50) ? departments[random.Below(8)] : random.Pick(departments);
        if (n % 120 == 60) {
            AddNickname(person, random);
        }
        staff.persons.push_back(std::move(person));
    }
    for (int n = 0; n < 10 + scale.persons / 50; ++n) {
        staff.strangers.push_back(names.Next());
        staff.strangers.back().organization = random.Pick(departments);
    }
    return staff;
}

void WritePersons(const std::vector<Person>& persons, const std::vector<Asset>& assets, Random random, RowSink& sink) {
    sink.BeginTable("Person", "LastName FirstName EventType Area Area2 Area3 Phone Extension Storage SecretaryLast "
                              "SecretaryFirst Code1 Code2 Code3");
    PersonWriter writer(persons, assets, random, sink);
    for (size_t n = 0; n < persons.size(); ++n) {
        writer.Write(persons[n], static_cast<int>(n));
    }
}

} // namespace velmora::demo
