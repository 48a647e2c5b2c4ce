// The end of a family's source file: its table of implementations at the level at hand, in the order of exports.def. Before
// including it the file defines ZEL_CURRENT_<group> as `~, 1`, and for every export of the group its conversion in namespace
// rows, under the export's name. The types come from the public declarations, so a row cannot disagree with them.
#include "frame/arguments.h"

#define ZEL_SECOND_(a, b, ...) b
#define ZEL_SECOND(...) ZEL_SECOND_(__VA_ARGS__)
#define ZEL_IS_CURRENT(group) ZEL_SECOND(ZEL_CURRENT_##group, 0, )

#define ZEL_JOIN_(a, b) a##b
#define ZEL_JOIN(a, b) ZEL_JOIN_(a, b)
#define ZEL_TABLE_(of, group) zel_##of##_##group
#define ZEL_TABLE(of, group) ZEL_TABLE_(of, group)
#define ZEL_CONVERSIONS(level) ZEL_TABLE(ZEL_JOIN(level, _conversions), ZEL_GROUP)

// A column beside the levels has only the exports with two implementations.
#define ZEL_IN_COLUMN_0(columns) 1
#define ZEL_IN_COLUMN_1(columns) ZEL_JOIN(ZEL_HAS_TWO_, columns)
#define ZEL_HAS_TWO_1 0
#define ZEL_HAS_TWO_2 1
#define ZEL_AND_00 0
#define ZEL_AND_01 0
#define ZEL_AND_10 0
#define ZEL_AND_11 1
#define ZEL_AND_(a, b) ZEL_AND_##a##b
#define ZEL_AND(a, b) ZEL_AND_(a, b)

#define ZEL_IS_ROW(group, columns) ZEL_AND(ZEL_IS_CURRENT(group), ZEL_JOIN(ZEL_IN_COLUMN_, ZEL_IS_COLUMN)(columns))

#define ZEL_PLACE_0(name)
#define ZEL_PLACE_1(name) name,
#define ZEL_EXPORT(name, group, columns) ZEL_JOIN(ZEL_PLACE_, ZEL_IS_ROW(group, columns))(name)
namespace zel::ZEL_LEVEL::places {
enum Place {
#include "frame/exports.def"
};
}  // namespace zel::ZEL_LEVEL::places
#undef ZEL_EXPORT

// What this level has, where others have it in another way.
#ifdef ZEL_NARROWER_LEVEL
#define ZEL_NARROWER ZEL_CONVERSIONS(ZEL_NARROWER_LEVEL)
extern "C" const zel::OfLevel ZEL_NARROWER[];
#else
#define ZEL_NARROWER nullptr
#endif
#if defined(ZEL_NARROWER_LEVEL) || defined(ZEL_IS_SHARED)
#define ZEL_OF_LEVEL_0(name)
#define ZEL_OF_LEVEL_1(name) ofLevel<rows::name, ZEL_NARROWER, places::name, decltype(::name)>(),
#define ZEL_EXPORT(name, group, columns) ZEL_JOIN(ZEL_OF_LEVEL_, ZEL_IS_ROW(group, columns))(name)
namespace zel::ZEL_LEVEL {
extern "C" {
extern const OfLevel ZEL_CONVERSIONS(ZEL_LEVEL)[];
constexpr OfLevel ZEL_CONVERSIONS(ZEL_LEVEL)[] = {
#include "frame/exports.def"
};
}
}  // namespace zel::ZEL_LEVEL
#undef ZEL_EXPORT
#endif

// The functions that the entries jump to, for all levels.
#ifndef ZEL_NARROWER_LEVEL
#include "frame/shaped.h"

#ifdef ZEL_IS_SHARED
#include "frame/shared.h"

#define ZEL_LEVELS ZEL_TABLE(levels, ZEL_GROUP)
extern "C" [[gnu::visibility("hidden")]] const zel::OfLevel* const ZEL_LEVELS[];
#define ZEL_EXPORTED(name) Export<rows::name, ZEL_LEVELS, places::name, decltype(::name)>
#else
#define ZEL_EXPORTED(name) Own<rows::name, nullptr, places::name, decltype(::name)>
#endif
#define ZEL_FUNCTION_0(name)
#define ZEL_FUNCTION_1(name) reinterpret_cast<Implementation>(&ZEL_EXPORTED(name)::call),
#define ZEL_EXPORT(name, group, columns) ZEL_JOIN(ZEL_FUNCTION_, ZEL_IS_ROW(group, columns))(name)
namespace zel::ZEL_LEVEL {
extern "C" {
extern const Implementation ZEL_TABLE(ZEL_LEVEL, ZEL_GROUP)[];
const Implementation ZEL_TABLE(ZEL_LEVEL, ZEL_GROUP)[] = {
#include "frame/exports.def"
};
}
}  // namespace zel::ZEL_LEVEL
#endif
