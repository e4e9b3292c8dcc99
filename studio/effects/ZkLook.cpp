#include "ZkLook.h"

#include "FieldReader_p.h"
#include "FieldWriter_p.h"
#include "LayerFields_p.h"

#include <QJsonDocument>

#include <initializer_list>

namespace zk::effects {

namespace {

constexpr int maxLayers = 32;

QString syntaxError(const QByteArray &json, const QJsonParseError &error)
{
    const int line = 1 + json.left(error.offset).count('\n');
    return QStringLiteral("line %1: %2").arg(line).arg(error.errorString());
}

// The default-constructed layer of that type name; false when there is none.
template<std::size_t index = 0>
bool makeKind(const QString &type, Layer::Kind *kind)
{
    if constexpr (index < std::variant_size_v<Layer::Kind>) {
        const std::variant_alternative_t<index, Layer::Kind> layer;
        if (type != QLatin1String(typeName(layer)))
            return makeKind<index + 1>(type, kind);
        *kind = layer;
        return true;
    } else {
        return false;
    }
}

void readLayer(FieldReader &fields, Layer *layer)
{
    QString type;
    fields.text("type", type);
    if (!makeKind(type, &layer->kind)) {
        fields.fail("type", QStringLiteral("there is no layer \"%1\"").arg(type));
        return;
    }
    fields.choice("place", layer->place, {"below", "above"});
    std::visit([&fields](auto &kind) { describe(kind, fields); }, layer->kind);
    fields.finish();
}

void readLayers(FieldReader &fields, QVector<Layer> *layers)
{
    const QJsonArray array = fields.array("layers", maxLayers);
    for (int i = 0; i < array.size() && fields.isGood(); ++i) {
        FieldReader child = fields.child(array.at(i), QStringLiteral("layers[%1]").arg(i));
        layers->append(Layer());
        readLayer(child, &layers->last());
        fields.takeError(child);
    }
}

bool isSlug(const QString &text)
{
    const auto isAllowed = [](QChar c) {
        return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-');
    };
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isAllowed);
}

void readLook(FieldReader &fields, Look *look)
{
    fields.text("slug", look->slug);
    if (fields.isGood() && !isSlug(look->slug))
        fields.fail("slug", QStringLiteral("lower-case letters, digits and '-' are expected"));
    fields.text("name", look->name);
    fields.text("category", look->category);
    fields.integer("version", look->version, 1, 1000000);
    if (fields.has("matte")) {
        FieldReader matte = fields.child(fields.take("matte"), QStringLiteral("matte"));
        describe(look->matte, matte);
        matte.finish();
        fields.takeError(matte);
    }
    readLayers(fields, &look->layers);
    fields.finish();
}

QJsonObject layerToJson(Layer layer)
{
    FieldWriter fields;
    std::visit(
        [&fields](auto &kind) {
            fields.text("type", QLatin1String(typeName(kind)));
            describe(kind, fields);
        },
        layer.kind);
    fields.choice("place", layer.place, {"below", "above"});
    return fields.object();
}

} // namespace

bool Look::fromJson(const QByteArray &json, Look *look, QString *error)
{
    QJsonParseError parsing {};
    const QJsonDocument document = QJsonDocument::fromJson(json, &parsing);
    QString problem;
    Look read;
    if (parsing.error != QJsonParseError::NoError) {
        problem = syntaxError(json, parsing);
    } else {
        FieldReader fields(document.isArray() ? QJsonValue(document.array())
                                              : QJsonValue(document.object()),
                           QString());
        readLook(fields, &read);
        problem = fields.error();
    }
    if (error)
        *error = problem;
    if (!problem.isEmpty())
        return false;
    *look = read;
    return true;
}

QByteArray Look::toJson() const
{
    FieldWriter fields;
    fields.text("slug", slug);
    fields.text("name", name);
    fields.text("category", category);
    QJsonObject root = fields.object();
    root.insert(QLatin1String("version"), version);

    MatteSettings settings = matte;
    FieldWriter matteFields;
    describe(settings, matteFields);
    root.insert(QLatin1String("matte"), matteFields.object());

    QJsonArray array;
    for (const Layer &layer : layers)
        array.append(layerToJson(layer));
    root.insert(QLatin1String("layers"), array);
    return QJsonDocument(root).toJson();
}

} // namespace zk::effects
