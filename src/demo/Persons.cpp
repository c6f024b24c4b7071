#include "demo/House.h"
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
        const WordFile words(QStringLiteral("people.txt"));
        for (const QStringList& names : words.Rows(QStringLiteral("always"))) {
            always_.push_back({.lastName = names[0], .firstName = names[1]});
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

    const Origin& DrawOrigin() { return random_.Draw(origins_, shares_, &Origin::share); }

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
    person.firstName += QStringLiteral(" \"%1\"").arg(QLatin1String(random.Pick(nicknames)));
}

// What the person should occupy. Some are wrong and some are missing.
Value SpaceType(const Person& person, const Asset& place, Random& random) {
    if (random.Percent(2)) {
        return {};
    }
    if (random.Percent(4)) {
        return QStringLiteral("Lab work");
    }
    return person.office >= 0 || place.kind == AssetKind::Office ? QStringLiteral("Office") : QStringLiteral("Desk");
}

Value Storage(Random& random) {
    if (!random.Percent(35)) {
        return {};
    }
    if (random.Percent(60)) {
        return QStringLiteral("Locker %1").arg(1 + random.Below(480));
    }
    return QStringLiteral("Cellar %1, shelf %2").arg(QChar(u'A' + random.Below(6))).arg(1 + random.Below(40));
}

} // namespace

Staff MakeStaff(const House& house) {
    Random random = house.Draws(House::Subject::Staff);
    const QStringList departments =
        WordFile(QStringLiteral("organizations.txt")).Entries(QStringLiteral("departments"));
    Names names(random);
    Staff staff;
    for (int n = 0; n < house.scale.persons; ++n) {
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
    for (int n = 0; n < 10 + house.scale.persons / 50; ++n) {
        staff.strangers.push_back(names.Next());
        staff.strangers.back().organization = random.Pick(departments);
    }
    return staff;
}

void WritePersons(const House& house, RowSink& sink) {
    Random random = house.Draws(House::Subject::PersonRows);
    const std::vector<Person>& persons = house.staff.persons;
    std::vector<const Asset*> places;
    for (const Asset& asset : house.assets) {
        if (asset.kind == AssetKind::Office || asset.kind == AssetKind::Desk) {
            places.push_back(&asset);
        }
    }
    const auto sometimes = [&](int percent, const QString& text) {
        return random.Percent(percent) && !text.isEmpty() ? Value(text) : Value();
    };
    sink.BeginTable("Person", "LastName FirstName EventType Area Area2 Area3 Phone Extension Storage SecretaryLast "
                              "SecretaryFirst Code1 Code2 Code3");
    const int firstExtension = persons.size() > 5000 ? 40001 : 5001;
    int number = 0;
    for (const Person& person : persons) {
        const Asset* place =
            person.office >= 0 ? &house.assets[static_cast<size_t>(person.office)] : random.Pick(places);
        const bool elsewhere = random.Percent(4);
        const std::array<QString, 3> areas = AreasOf(elsewhere ? *random.Pick(places) : *place);
        const QString extension = QString::number(firstExtension + number++);
        const bool hasSecretary = random.Percent(30);
        const Person& secretary = persons[static_cast<size_t>(random.Below(static_cast<int>(persons.size()) / 15))];
        const bool park = random.Percent(20);
        sink.Add(
            {person.lastName, person.firstName, SpaceType(person, *place, random), areas[0], sometimes(96, areas[1]),
             sometimes(90, areas[2]), sometimes(97, QStringLiteral("01632 49 ") + extension), sometimes(95, extension),
             Storage(random), hasSecretary ? Value(secretary.lastName) : Value(),
             hasSecretary ? Value(secretary.firstName) : Value(),
             QStringLiteral("K-%1").arg(number, 5, 10, QLatin1Char('0')), QString::number(4100 + random.Below(24) * 10),
             park ? Value(QStringLiteral("P%1-%2").arg(1 + random.Below(3)).arg(1 + random.Below(240))) : Value()});
    }
}

} // namespace velmora::demo
