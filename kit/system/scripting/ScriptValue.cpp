// SPDX-License-Identifier: MIT
#include "DozelyKit/system/scripting/ScriptValue_p.h"

#include <QDateTime>

#include <lua.hpp>
#include <optional>

namespace dozely
{

namespace
{
QByteArray bytesAt(lua_State *lua, int index)
{
    std::size_t size = 0;
    const char *bytes = lua_tolstring(lua, index, &size); // a text: nothing is converted
    return QByteArray(bytes, static_cast<qsizetype>(size));
}

/// Reads values and counts what they come to.
class Reader
{
public:
    explicit Reader(lua_State *lua) : m_lua(lua) {}

    QVariant value(int index, int depth = 0)
    {
        if (++m_nodes > ScriptValue::maximumNodes || depth > ScriptValue::maximumDepth)
            luaL_error(m_lua, "a value is too large or too deep to be handed over");
        switch (lua_type(m_lua, index)) {
        case LUA_TNIL:
            return {};
        case LUA_TBOOLEAN:
            return lua_toboolean(m_lua, index) != 0;
        case LUA_TNUMBER:
            return lua_isinteger(m_lua, index) ? QVariant(static_cast<qlonglong>(lua_tointeger(m_lua, index)))
                                               : QVariant(lua_tonumber(m_lua, index));
        case LUA_TSTRING:
            return string(index);
        case LUA_TTABLE:
            return table(lua_absindex(m_lua, index), depth);
        default:
            luaL_error(m_lua, "a %s cannot be handed over", luaL_typename(m_lua, index));
            return {};
        }
    }

private:
    QString string(int index)
    {
        m_bytes += static_cast<qsizetype>(lua_rawlen(m_lua, index));
        if (m_bytes > ScriptValue::maximumBytes)
            luaL_error(m_lua, "the values are too long to be handed over");
        return QString::fromUtf8(bytesAt(m_lua, index));
    }

    QVariant table(int index, int depth)
    {
        luaL_checkstack(m_lua, 3, "a value is too deep");
        const auto size = static_cast<lua_Integer>(lua_rawlen(m_lua, index));
        QVariantList list;
        QVariantMap map;
        lua_pushnil(m_lua);
        if (lua_next(m_lua, index) == 0)
            return list;
        lua_pop(m_lua, 2);
        if (size > 0) {
            for (lua_Integer i = 1; i <= size; ++i) {
                lua_rawgeti(m_lua, index, i);
                list += value(-1, depth + 1);
                lua_pop(m_lua, 1);
            }
        }
        lua_pushnil(m_lua);
        lua_Integer others = 0;
        while (lua_next(m_lua, index) != 0) {
            const bool inList = lua_isinteger(m_lua, -2) != 0 && lua_tointeger(m_lua, -2) >= 1 &&
                                lua_tointeger(m_lua, -2) <= size;
            if (!inList) {
                ++others;
                if (size > 0 || lua_type(m_lua, -2) != LUA_TSTRING)
                    luaL_error(m_lua, "a table to be handed over needs the keys 1 to n, or texts as keys");
                const QString key = string(-2);
                map.insert(key, value(-1, depth + 1));
            }
            lua_pop(m_lua, 1);
        }
        return others > 0 ? QVariant(map) : QVariant(list);
    }

    lua_State *m_lua;
    int m_nodes = 0;
    qsizetype m_bytes = 0;
};

void pushText(lua_State *lua, const QByteArray &bytes)
{
    lua_pushlstring(lua, bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

void pushValue(lua_State *lua, const QVariant &value, int depth)
{
    luaL_checkstack(lua, 3, "a result is too deep");
    if (depth > ScriptValue::maximumDepth)
        luaL_error(lua, "a result is too deep");
    switch (value.typeId()) {
    case QMetaType::Bool:
        lua_pushboolean(lua, value.toBool() ? 1 : 0);
        break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        lua_pushinteger(lua, static_cast<lua_Integer>(value.toLongLong()));
        break;
    case QMetaType::Float:
    case QMetaType::Double:
        lua_pushnumber(lua, value.toDouble());
        break;
    case QMetaType::QString:
        pushText(lua, value.toString().toUtf8());
        break;
    case QMetaType::QByteArray:
        pushText(lua, value.toByteArray());
        break;
    case QMetaType::QDateTime:
        pushText(lua, value.toDateTime().toString(Qt::ISODate).toUtf8());
        break;
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        lua_createtable(lua, static_cast<int>(list.size()), 0);
        for (qsizetype i = 0; i < list.size(); ++i) {
            pushValue(lua, list.at(i), depth + 1);
            lua_rawseti(lua, -2, static_cast<lua_Integer>(i) + 1);
        }
        break;
    }
    case QMetaType::QVariantMap: {
        const QVariantMap map = value.toMap();
        lua_createtable(lua, 0, static_cast<int>(map.size()));
        for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
            pushText(lua, entry.key().toUtf8());
            pushValue(lua, entry.value(), depth + 1);
            lua_rawset(lua, -3);
        }
        break;
    }
    default:
        lua_pushnil(lua);
    }
}
} // namespace

QVariantList ScriptValue::arguments(lua_State *lua, int first)
{
    Reader reader(lua);
    QVariantList values;
    const int last = lua_gettop(lua);
    for (int index = first; index <= last; ++index)
        values += QVariantList{reader.value(index)};
    return values;
}

void ScriptValue::push(lua_State *lua, const QVariant &value)
{
    pushValue(lua, value, 0);
}

QString ScriptValue::text(lua_State *lua, int index)
{
    switch (lua_type(lua, index)) {
    case LUA_TSTRING: {
        const QString text = QString::fromUtf8(bytesAt(lua, index));
        return text.isNull() ? QString("") : text;
    }
    case LUA_TBOOLEAN:
        return lua_toboolean(lua, index) != 0 ? "true" : "false";
    case LUA_TNUMBER: {
        if (lua_isinteger(lua, index))
            return QString::number(static_cast<qlonglong>(lua_tointeger(lua, index)));
        constexpr int digits = 14; // as many as the language prints
        const QString text = QString::number(lua_tonumber(lua, index), 'g', digits);
        const bool looksWhole =
            std::all_of(text.begin(), text.end(), [](QChar c) { return c == '-' || c.isDigit(); });
        return looksWhole ? text + ".0" : text;
    }
    default:
        return {};
    }
}

} // namespace dozely
