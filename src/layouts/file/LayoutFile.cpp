#include "layouts/file/LayoutFile.h"

#include "base/Error.h"
#include "engine/FieldType.h"
#include "layouts/file/ObjectReader.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace velmora::layouts {

using namespace Qt::StringLiterals;
using engine::CatalogTable;
using engine::FieldType;

namespace {

constexpr size_t mostTables = 8;
constexpr size_t mostGroups = 5;
constexpr size_t mostColumns = 20;
constexpr size_t mostItems = 100;
constexpr qint64 longestFile = 1 << 20;

class LayoutReader {
public:
    LayoutReader(const JsonNode& root, const QString& file, const engine::Catalog& catalog)
        : root_(root, {file, 1, {}}), catalog_(catalog) {
        layout_.file = file;
    }

    Layout Read() {
        root_.Text(u"comment"_s);
        root_.EachObject(u"tables"_s, mostTables, [this](ObjectReader& reader) { ReadTable(reader); });
        if (layout_.tables.empty()) {
            root_.PlaceOf(u"tables"_s).Fail(u"\"tables\" names no table"_s);
        }
        ReadPageSetup();
        layout_.select = ReadFormula(root_, u"select"_s, layout_.scope);
        layout_.sort = ReadSort(root_, layout_.scope);
        root_.EachObject(u"groups"_s, mostGroups, [this](ObjectReader& reader) { ReadGroup(reader); });
        root_.EachObject(u"columns"_s, mostColumns, [this](ObjectReader& reader) { ReadColumn(reader); });
        root_.EachObject(u"body"_s, mostItems, [this](ObjectReader& reader) { ReadItem(reader); });
        root_.Object(u"details"_s, [this](ObjectReader& reader) { ReadDetails(reader); });
        ReadTexts();
        root_.Finish();
        if (layout_.columns.empty() == layout_.body.empty()) {
            root_.Place().Fail(layout_.columns.empty() ? u"\"columns\" or \"body\" is missing"_s
                                                       : u"a layout has \"columns\" or a \"body\", not both"_s);
        }
        return std::move(layout_);
    }

private:
    static Formula ReadFormula(ObjectReader& reader, const QString& key, const FieldScope& scope) {
        const QString formula = reader.Text(key);
        try {
            return ParseFormula(formula, scope);
        } catch (const Error& error) {
            reader.PlaceOf(key).Fail(error.Description().chopped(1));
        }
    }

    static FieldName FindField(const QString& name, const FieldScope& scope, const LayoutPlace& place) {
        const auto field = scope.Find(name);
        if (!field) {
            place.Fail(u"there is no field \"%1\"; %2"_s.arg(name, scope.Choices(name)));
        }
        return *field;
    }

    static FieldName ReadField(ObjectReader& reader, const QString& key, const FieldScope& scope) {
        return FindField(reader.RequiredText(key), scope, reader.PlaceOf(key));
    }

    static Template ReadTemplate(ObjectReader& reader, const QString& key, const TemplateUse& use) {
        try {
            return Template(reader.Text(key), use);
        } catch (const TemplateFault& fault) {
            reader.PlaceOf(key).Fail(fault.what);
        }
    }

    TemplateUse OfRecord() { return {&layout_.scope, &layout_.fields, false, false}; }

    const CatalogTable& ReadTableName(ObjectReader& reader) const {
        const QString name = reader.RequiredText(u"table"_s);
        const CatalogTable* table = catalog_.FindTable(name);
        if (table == nullptr) {
            reader.PlaceOf(u"table"_s).Fail(u"the database has no table \"%1\""_s.arg(name));
        }
        return *table;
    }

    // Without such a tie every record would be joined with every other.
    static bool Ties(const Formula& on, const QString& table) {
        if (on.kind == Formula::Kind::And) {
            return std::any_of(on.parts.begin(), on.parts.end(),
                               [&](const Formula& part) { return Ties(part, table); });
        }
        return on.kind == Formula::Kind::Compare && on.comparison == u"=" && on.left.field && on.right.field &&
               (on.left.field->table == table) != (on.right.field->table == table);
    }

    void ReadTable(ObjectReader& reader) {
        LayoutTable table;
        const CatalogTable& known = ReadTableName(reader);
        table.table = known.name;
        table.alias = reader.Text(u"as"_s);
        if (!std::all_of(table.alias.begin(), table.alias.end(), [](QChar c) { return c.isLetterOrNumber(); })) {
            reader.PlaceOf(u"as"_s).Fail(u"a table's second name has letters and digits alone"_s);
        }
        const QString name = table.alias.isEmpty() ? table.table : table.alias;
        if (!layout_.scope.Add(known, table.alias)) {
            reader.Place().Fail(u"the name %1 is taken; give this one another with \"as\""_s.arg(name));
        }
        if (!layout_.tables.empty()) {
            reader.RequiredText(u"on"_s);
            table.on = ReadFormula(reader, u"on"_s, layout_.scope);
            if (!Ties(table.on, name)) {
                reader.PlaceOf(u"on"_s).Fail(
                    u"the formula does not tie %1 to a table before it, as {%1...} = {Table.Field} does"_s.arg(name));
            }
            table.optional = reader.Flag(u"optional"_s, false);
        }
        layout_.tables.push_back(std::move(table));
    }

    void ReadPageSetup() {
        layout_.pages.orientation = root_.OneOf(u"orientation"_s, {u"portrait"_s, u"landscape"_s}) == 0
                                        ? Orientation::Portrait
                                        : Orientation::Landscape;
        layout_.pages.fontPoints = root_.Number(u"fontSize"_s, layout_.pages.fontPoints, 6, 24);
        layout_.pages.marginInches = root_.Number(u"margin"_s, layout_.pages.marginInches, 0.25, 2);
        layout_.numberPagesPerGroup = root_.OneOf(u"pageNumbers"_s, {u"document"_s, u"group"_s}) == 1;
        layout_.rowLines = root_.Flag(u"rowLines"_s, true);
    }

    static std::vector<SortKey> ReadSort(ObjectReader& reader, const FieldScope& scope) {
        std::vector<SortKey> keys;
        for (const auto& [node, place] : reader.List(u"sort"_s, mostColumns)) {
            if (node->kind != JsonNode::Kind::Text) {
                place.Fail(u"a text is wanted here: \"Table.Field\" or \"Table.Field descending\""_s);
            }
            const QString descending = u" descending"_s;
            const bool down = node->text.endsWith(descending);
            const QString name = down ? node->text.chopped(descending.size()) : node->text;
            keys.push_back({FindField(name.trimmed(), scope, place), down});
        }
        return keys;
    }

    void ReadGroup(ObjectReader& reader) {
        LayoutGroup group;
        group.field = ReadField(reader, u"by"_s, layout_.scope);
        group.unit =
            static_cast<GroupUnit>(reader.OneOf(u"unit"_s, {u"value"_s, u"day"_s, u"closing day"_s, u"initial"_s}));
        const bool isDay = group.unit == GroupUnit::Day || group.unit == GroupUnit::ClosingDay;
        const FieldType wanted = isDay ? FieldType::DateTime : FieldType::Text;
        if (group.unit != GroupUnit::Value && group.field.type != wanted) {
            reader.PlaceOf(u"unit"_s).Fail(isDay ? u"the field of a day is a date"_s
                                                 : u"the field of an initial is a text"_s);
        }
        group.heading = ReadTemplate(reader, u"heading"_s, OfRecord());
        group.none = ReadTemplate(reader, u"none"_s, OfRecord());
        group.footer = ReadTemplate(reader, u"footer"_s, {nullptr, nullptr, true, false});
        group.newPage = reader.Flag(u"newPage"_s, false);
        layout_.groups.push_back(std::move(group));
    }

    void ReadColumn(ObjectReader& reader) {
        LayoutColumn column;
        column.heading = reader.Text(u"heading"_s);
        column.width = reader.Number(u"width"_s, column.width, 0.1, 1000);
        column.alignment = static_cast<Alignment>(reader.OneOf(u"align"_s, {u"left"_s, u"center"_s, u"right"_s}));
        column.bold = reader.Flag(u"bold"_s, false);
        column.repeat = reader.Flag(u"repeat"_s, true);
        ReadColumnContent(reader, column);
        layout_.columns.push_back(std::move(column));
    }

    static void RequireTrue(ObjectReader& reader, const QString& key) {
        if (!reader.Flag(key, true)) {
            reader.PlaceOf(key).Fail(u"\"%1\" is true, or the item is left out"_s.arg(key));
        }
    }

    void ReadColumnContent(ObjectReader& reader, LayoutColumn& column) {
        const int contents = int(reader.Has(u"value"_s)) + int(reader.Has(u"tick"_s)) + int(reader.Has(u"blank"_s));
        if (contents != 1) {
            reader.Place().Fail(u"a column has one of \"value\", \"tick\" and \"blank\""_s);
        }
        if (reader.Has(u"tick"_s)) {
            const FieldName field = ReadField(reader, u"tick"_s, layout_.scope);
            if (field.type != FieldType::YesNo) {
                reader.PlaceOf(u"tick"_s).Fail(u"the field of a tick box is a yes/no field"_s);
            }
            column.kind = LayoutColumn::Kind::Tick;
            column.tick = layout_.fields.Add(field);
        } else if (reader.Has(u"blank"_s)) {
            RequireTrue(reader, u"blank"_s);
            column.kind = LayoutColumn::Kind::Blank;
        } else {
            column.value = ReadTemplate(reader, u"value"_s, OfRecord());
            column.below = ReadTemplate(reader, u"below"_s, OfRecord());
        }
    }

    void ReadItem(ObjectReader& reader) {
        BodyItem item;
        if (reader.Has(u"space"_s)) {
            item.kind = BodyItem::Kind::Space;
            item.points = reader.Number(u"space"_s, 0, 0, 500);
        } else if (reader.Has(u"rule"_s)) {
            item.kind = BodyItem::Kind::Rule;
            RequireTrue(reader, u"rule"_s);
        } else if (reader.Has(u"label"_s)) {
            item.kind = BodyItem::Kind::LabelValue;
            item.label = reader.RequiredText(u"label"_s);
            item.text = ReadTemplate(reader, u"value"_s, OfRecord());
        } else if (reader.Has(u"text"_s)) {
            item.text = ReadTemplate(reader, u"text"_s, OfRecord());
            item.bold = reader.Flag(u"bold"_s, false);
            item.size = reader.Number(u"size"_s, 1, 0.5, 4);
        } else {
            reader.Place().Fail(u"an item of the body has one of \"text\", \"label\", \"space\" and \"rule\""_s);
        }
        layout_.body.push_back(std::move(item));
    }

    void ReadDetails(ObjectReader& reader) {
        LayoutDetails details;
        const CatalogTable& table = ReadTableName(reader);
        details.table = table.name;
        FieldScope scope;
        scope.Add(table, {});
        details.key = ReadField(reader, u"field"_s, scope);
        const FieldName parent = ReadField(reader, u"equals"_s, layout_.scope);
        if (!SameKind(details.key.type, parent.type)) {
            reader.PlaceOf(u"equals"_s)
                .Fail(u"the field holds %1 and \"field\" %2, which are never equal"_s.arg(
                    engine::Describe(parent.type), engine::Describe(details.key.type)));
        }
        details.parent = layout_.fields.Add(parent);
        details.select = ReadFormula(reader, u"select"_s, scope);
        details.sort = ReadSort(reader, scope);
        reader.RequiredText(u"text"_s);
        details.text = ReadTemplate(reader, u"text"_s, {&scope, &details.fields, false, false});
        layout_.details = std::move(details);
    }

    PageStrip ReadStrip(const QString& key) {
        PageStrip strip;
        root_.Object(key, [&](ObjectReader& reader) {
            const TemplateUse use{nullptr, nullptr, false, true};
            strip.left = ReadTemplate(reader, u"left"_s, use);
            strip.center = ReadTemplate(reader, u"center"_s, use);
            strip.right = ReadTemplate(reader, u"right"_s, use);
        });
        return strip;
    }

    void ReadTexts() {
        root_.RequiredText(u"title"_s);
        layout_.title = ReadTemplate(root_, u"title"_s, {});
        layout_.subtitle = ReadTemplate(root_, u"subtitle"_s, {});
        layout_.total = ReadTemplate(root_, u"total"_s, {nullptr, nullptr, true, false});
        layout_.empty = ReadTemplate(root_, u"empty"_s, {});
        layout_.pageHeader = ReadStrip(u"pageHeader"_s);
        layout_.pageFooter = ReadStrip(u"pageFooter"_s);
    }

    ObjectReader root_;
    const engine::Catalog& catalog_;
    Layout layout_;
};

} // namespace

Layout ReadLayout(const QByteArray& bytes, const QString& file, const engine::Catalog& catalog) {
    try {
        const JsonNode root = ParseJson(bytes);
        return LayoutReader(root, file, catalog).Read();
    } catch (const JsonFault& fault) {
        LayoutPlace{file, fault.line, u"column %1"_s.arg(fault.column)}.Fail(fault.what);
    }
}

Layout ReadLayoutFile(const QString& path, const engine::Catalog& catalog) {
    const QString name = QFileInfo(path).fileName();
    QFile file(path);
    if (!QFileInfo(path).isFile()) {
        throw ProgramError(ErrorNumber::FileNotFound,
                           u"The report layout %1 is missing: there is no file %2. Put it back from a backup, or from "
                           "a site that velmora-db has just created."_s.arg(name, path));
    }
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.read(longestFile + 1) : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        throw ProgramError(ErrorNumber::FileAccess,
                           u"The report layout %1 cannot be read: %2"_s.arg(path, file.errorString()));
    }
    if (bytes.size() > longestFile) {
        throw ProgramError(ErrorNumber::InvalidCall,
                           u"The report layout %1 is no layout: it is larger than a megabyte."_s.arg(path));
    }
    return ReadLayout(bytes, name, catalog);
}

} // namespace velmora::layouts
