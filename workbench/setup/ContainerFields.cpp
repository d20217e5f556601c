#include "setup/ContainerFields.h"

#include "reading/FieldReader.h"
#include "reading/TextLists.h"

#include <QCoreApplication>
#include <QMap>

namespace
{

constexpr int maximumPosition = 32767; // widget pixels, to all sides

struct ContainerFieldsText
{
    Q_DECLARE_TR_FUNCTIONS(ContainerFields)
};

const QMap<QString, WindowPlace::State> &windowStates()
{
    static const QMap<QString, WindowPlace::State> states = {
        {QStringLiteral("maximised"), WindowPlace::State::Maximised},
        {QStringLiteral("normal"), WindowPlace::State::Normal},
        {QStringLiteral("minimised"), WindowPlace::State::Minimised},
        {QStringLiteral("closed"), WindowPlace::State::Closed},
    };
    return states;
}

SceneSource readSource(FieldReader &reader, const QJsonObject &curve, const QString &curvePlace, const QString &side,
                       const ContainerFields::Keys &keys)
{
    if (curve.value(side).isNull()) { // written out, so that a forgotten source is not taken for none
        return {};
    }
    const QString place = FieldReader::placeOf(curvePlace, side);
    const QJsonObject object = reader.object(curve, curvePlace, side, true);
    if (!curve.value(side).isObject()) {
        return {};
    }
    reader.allowOnly(
        object, place,
        {QStringLiteral("module"), QStringLiteral("motor"), QStringLiteral("value"), QStringLiteral("signed")});
    SceneSource source;
    source.module = reader.text(object, place, QStringLiteral("module"));
    source.motor = reader.text(object, place, QStringLiteral("motor"), QString()).trimmed();
    source.value = reader.text(object, place, QStringLiteral("value")).trimmed();
    source.isSigned = reader.boolean(object, place, QStringLiteral("signed"), false);
    if (!keys.all.contains(source.module)) {
        reader.addError(place, QStringLiteral("module"),
                        ContainerFieldsText::tr("the key of one of the set-up's modules: %1")
                            .arg(quotedList(nearestTexts(source.module, keys.all, keys.all.size()))));
    } else if (keys.takenOut.contains(source.module)) {
        reader.addError(place, QStringLiteral("module"), ContainerFieldsText::tr("a module that is plugged in"));
    }
    return source;
}

QJsonValue writeSource(const SceneSource &source)
{
    if (!source.isChosen()) {
        return {};
    }
    QJsonObject object = {{QStringLiteral("module"), source.module}, {QStringLiteral("value"), source.value}};
    if (!source.motor.isEmpty()) {
        object.insert(QStringLiteral("motor"), source.motor);
    }
    if (source.isSigned) {
        object.insert(QStringLiteral("signed"), true);
    }
    return object;
}

/// Adds an error unless \a source names the module that the first of \a curves with a source there has on this side.
void requireSameModule(FieldReader &reader, const QString &place, const SceneSource &source,
                       const QList<SceneCurve> &curves, SceneSource SceneCurve::*side)
{
    for (const SceneCurve &curve : curves) {
        const SceneSource &first = curve.*side;
        if (!first.isChosen() || !source.isChosen()) {
            continue;
        }
        if (first.module != source.module) {
            reader.addError(
                place, QStringLiteral("module"),
                ContainerFieldsText::tr("\"%1\" as for the first curve, because all curves share one module per side")
                    .arg(first.module));
        }
        return;
    }
}

QList<SceneCurve> readCurves(FieldReader &reader, const QJsonObject &object, const QString &place,
                             const ContainerFields::Keys &keys)
{
    const QString name = QStringLiteral("curves");
    const QString nameX = QStringLiteral("x");
    const QString nameY = QStringLiteral("y");
    const QList<QJsonObject> list = reader.objects(object, place, name, true);
    if (list.size() > SceneContainer::maximumCurves) {
        reader.addError(place, name, ContainerFieldsText::tr("at most %1 curves").arg(SceneContainer::maximumCurves));
    }
    QList<SceneCurve> curves;
    for (int i = 0; i < list.size(); ++i) {
        const QString curvePlace = FieldReader::placeOf(place, name, i);
        reader.allowOnly(list.at(i), curvePlace, {nameX, nameY, QStringLiteral("on")});
        SceneCurve curve;
        curve.x = readSource(reader, list.at(i), curvePlace, nameX, keys);
        curve.y = readSource(reader, list.at(i), curvePlace, nameY, keys);
        curve.isOn = reader.boolean(list.at(i), curvePlace, QStringLiteral("on"), true);
        requireSameModule(reader, FieldReader::placeOf(curvePlace, nameX), curve.x, curves, &SceneCurve::x);
        requireSameModule(reader, FieldReader::placeOf(curvePlace, nameY), curve.y, curves, &SceneCurve::y);
        curves.append(curve);
    }
    return curves;
}

void readOptions(FieldReader &reader, const QJsonObject &object, const QString &place, SceneContainer &container)
{
    const QString name = QStringLiteral("options");
    const QString optionsPlace = FieldReader::placeOf(place, name);
    const QJsonObject options = reader.object(object, place, name, false);
    reader.allowOnly(options, optionsPlace,
                     {QStringLiteral("lines"), QStringLiteral("square"), QStringLiteral("showAll")});
    container.showsLines = reader.boolean(options, optionsPlace, QStringLiteral("lines"), container.showsLines);
    container.isSquare = reader.boolean(options, optionsPlace, QStringLiteral("square"), container.isSquare);
    container.showsAll = reader.boolean(options, optionsPlace, QStringLiteral("showAll"), container.showsAll);
}

WindowPlace readPlace(FieldReader &reader, const QJsonObject &object, const QString &containerPlace)
{
    const QString name = QStringLiteral("window");
    const QString place = FieldReader::placeOf(containerPlace, name);
    const QJsonObject window = reader.object(object, containerPlace, name, false);
    const QStringList sides = {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"),
                               QStringLiteral("height")};
    reader.allowOnly(window, place, QStringList{QStringLiteral("state")} + sides);
    WindowPlace result;
    result.state = windowStates().value(
        reader.choice(window, place, QStringLiteral("state"), windowStates().keys(), windowStates().key(result.state)));
    int given = 0;
    for (const QString &side : sides) {
        given += window.contains(side) ? 1 : 0;
    }
    for (const QString &side : sides) {
        if (given > 0 && !window.contains(side)) {
            reader.addError(place, side,
                            ContainerFieldsText::tr("a whole number, because position and size belong together"));
        }
    }
    const int x = int(reader.integer(window, place, sides.at(0), -maximumPosition, maximumPosition, 0));
    const int y = int(reader.integer(window, place, sides.at(1), -maximumPosition, maximumPosition, 0));
    const int width = int(reader.integer(window, place, sides.at(2), 1, WindowPlace::maximumSide, 1));
    const int height = int(reader.integer(window, place, sides.at(3), 1, WindowPlace::maximumSide, 1));
    result.geometry = given > 0 ? QRect(x, y, width, height) : QRect();
    if (given > 0 && result.state != WindowPlace::State::Normal) {
        reader.addError(place, QStringLiteral("state"),
                        ContainerFieldsText::tr("\"normal\", because the window has position and size"));
    }
    return result;
}

QJsonObject writePlace(const WindowPlace &place)
{
    QJsonObject object = {{QStringLiteral("state"), windowStates().key(place.state)}};
    if (place.geometry.isValid()) {
        object.insert(QStringLiteral("x"), place.geometry.x());
        object.insert(QStringLiteral("y"), place.geometry.y());
        object.insert(QStringLiteral("width"), place.geometry.width());
        object.insert(QStringLiteral("height"), place.geometry.height());
    }
    return object;
}

} // namespace

QStringList ContainerFields::names()
{
    return QStringList{QStringLiteral("plugin"), QStringLiteral("window")} + namesInScene();
}

QStringList ContainerFields::namesInScene()
{
    return {QStringLiteral("curves"), QStringLiteral("selectedCurve"), QStringLiteral("options")};
}

SceneContainer ContainerFields::read(FieldReader &reader, const QJsonObject &object, const QString &place,
                                     const Keys &keys)
{
    SceneContainer container;
    container.curves = readCurves(reader, object, place, keys);
    container.selectedCurve =
        int(reader.integer(object, place, QStringLiteral("selectedCurve"), 1, SceneContainer::maximumCurves, 1)) - 1;
    readOptions(reader, object, place, container);
    return container;
}

SceneContainer ContainerFields::readListed(FieldReader &reader, const QJsonObject &object, const QString &place,
                                           const Keys &keys)
{
    reader.allowOnly(object, place, names());
    SceneContainer container = read(reader, object, place, keys);
    container.plugin = reader.text(object, place, QStringLiteral("plugin"), QString());
    container.place = readPlace(reader, object, place);
    return container;
}

QJsonObject ContainerFields::write(const SceneContainer &container)
{
    QJsonArray curves;
    for (const SceneCurve &curve : container.curves) {
        curves.append(QJsonObject{{QStringLiteral("x"), writeSource(curve.x)},
                                  {QStringLiteral("y"), writeSource(curve.y)},
                                  {QStringLiteral("on"), curve.isOn}});
    }
    return {
        {QStringLiteral("plugin"), container.plugin},
        {QStringLiteral("window"), writePlace(container.place)},
        {QStringLiteral("curves"), curves},
        {QStringLiteral("selectedCurve"), container.selectedCurve + 1},
        {QStringLiteral("options"), QJsonObject{{QStringLiteral("lines"), container.showsLines},
                                                {QStringLiteral("square"), container.isSquare},
                                                {QStringLiteral("showAll"), container.showsAll}}},
    };
}
