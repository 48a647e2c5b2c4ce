#include "python/function.h"

#include <bit>
#include <cstring>
#include <memory>
#include <vector>

#include "catalog/path.h"
#include "python/texts.h"

namespace zelpy {
namespace {

using catalog::Extra;
using catalog::Function;

struct Binding {
    const Function* function;
    ImageForm source, target;  // in place, target alone
    uint32_t opaque;
    int32_t levels;            // that the destination has at most
    const char* coefficients;  // the name of the argument
    PyMethodDef method;
};

PyObject* errorType;
PyObject* warningType;

// The arguments beside images, by their number in Names.
enum Keyword {
    source,
    out,
    aval,
    matrix,
    coeffs,
    vMin,
    vMax,
    noise,
    dtype,
    levels,
    bitOffset,
    threshold,
    layout,
    above,
    grid,
    region,
    keywordCount
};
constexpr const char* keywordNames[] = {"source", "out",    "aval",         "matrix",    "coeffs", "vMin",  "vMax", "noise",
                                        "dtype",  "levels", "dstBitOffset", "threshold", "layout", "above", "grid", "region"};
PyObject* keywordObjects[keywordCount];
static_assert(std::size(keywordNames) == keywordCount);

bool serves(const Binding& b, int keyword) {
    const Function& f = *b.function;
    const bool toBits = f.takes(Extra::threshold);
    switch (keyword) {
        case source:
            return true;
        case out:
            return f.sourcePlanes != 0;
        case aval:
            return f.takes(Extra::alpha);
        case matrix:
        case coeffs:
            return f.coefficientCount != 0 && std::strcmp(b.coefficients, keywordNames[keyword]) == 0;
        case vMin:
        case vMax:
            return f.takes(Extra::range);
        case noise:
        case levels:
            return f.takes(Extra::reduction) && !toBits;
        case dtype:
            return f.takes(Extra::reduction);
        case bitOffset:
        case threshold:
            return toBits;
        case layout:
        case above:
            return f.takes(Extra::slice);
        default:
            return f.takes(Extra::grid);
    }
}

// Raises the package's own exception, with what it is about as attributes.
void raise(const Binding& b, const char* argument, int plane, PyObject* text, const Constant* status) {
    PyObject* const where = plane < 0 ? PyUnicode_FromString(argument) : PyUnicode_FromFormat("%s[%d]", argument, plane);
    PyObject* const message = where && text ? PyUnicode_FromFormat("%s: %U: %U", b.method.ml_name, where, text) : nullptr;
    PyObject* const error = message ? PyObject_CallOneArg(errorType, message) : nullptr;
    PyObject* const name = PyUnicode_FromString(b.method.ml_name);
    PyObject* const value = status ? PyLong_FromLong(status->value) : Py_NewRef(Py_None);
    PyObject* const word = status ? PyUnicode_FromString(status->name) : Py_NewRef(Py_None);
    if (error && name && value && word && PyObject_SetAttrString(error, "function", name) == 0 &&
        PyObject_SetAttrString(error, "argument", where) == 0 && PyObject_SetAttrString(error, "status", value) == 0 &&
        PyObject_SetAttrString(error, "status_name", word) == 0)
        PyErr_SetObject(errorType, error);
    for (PyObject* object : {where, message, error, name, value, word}) Py_XDECREF(object);
}

bool refuse(const Binding& b, const char* argument, const char* text) {
    PyObject* const object = PyUnicode_FromString(text);
    if (object) raise(b, argument, -1, object, nullptr);
    Py_XDECREF(object);
    return false;
}

bool refuse(const Binding& b, const Complaint& complaint) {
    if (complaint.text) raise(b, complaint.argument, complaint.plane, complaint.text, nullptr);
    Py_XDECREF(complaint.text);
    return false;
}

// Everything that one call needs.
struct Arguments {
    PyObject* given[keywordCount] = {};
    float floats[16];
    double doubles[3];
    int32_t above = 0;
    std::unique_ptr<uint8_t[]> temporary;
};

bool sort(const Binding& b, PyObject* const* values, Py_ssize_t count, PyObject* names, Arguments& arguments) {
    const Py_ssize_t positional = b.function->sourcePlanes ? 2 : 1;
    if (count > positional) {
        PyErr_Format(PyExc_TypeError, "%s() takes at most %zd positional arguments but %zd were given", b.method.ml_name,
                     positional, count);
        return false;
    }
    for (Py_ssize_t i = 0; i < count; ++i) arguments.given[i] = values[i];
    const Py_ssize_t named = names ? PyTuple_GET_SIZE(names) : 0;
    for (Py_ssize_t i = 0; i < named; ++i) {
        PyObject* const name = PyTuple_GET_ITEM(names, i);
        int k = 0;
        while (k < keywordCount && name != keywordObjects[k]) ++k;
        if (k == keywordCount)
            for (k = 0; k < keywordCount && PyUnicode_Compare(name, keywordObjects[k]) != 0;) ++k;
        if (k == keywordCount || !serves(b, k) || arguments.given[k]) {
            PyErr_Format(PyExc_TypeError,
                         k < keywordCount && arguments.given[k] ? "%s() got multiple values for argument '%U'"
                                                                : "%s() got an unexpected keyword argument '%U'",
                         b.method.ml_name, name);
            return false;
        }
        arguments.given[k] = values[count + i];
    }
    if (arguments.given[out] == Py_None) arguments.given[out] = nullptr;
    if (arguments.given[source]) return true;
    PyErr_Format(PyExc_TypeError, "%s() missing 1 required positional argument: 'source'", b.method.ml_name);
    return false;
}

// An argument of 32 bits, or as many as the limits say.
bool integer(const Binding& b, const Arguments& a, int keyword, int32_t& value, int64_t lowest = INT32_MIN,
             int64_t highest = INT32_MAX) {
    if (!a.given[keyword]) return true;
    PyObject* const index = PyNumber_Index(a.given[keyword]);
    if (!index) return false;
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(index, &overflow);
    Py_DECREF(index);
    if (overflow || number < lowest || number > highest) {
        PyObject* const text =
            PyUnicode_FromFormat("must be from %lld to %lld", static_cast<long long>(lowest), static_cast<long long>(highest));
        if (text) raise(b, keywordNames[keyword], -1, text, nullptr);
        Py_XDECREF(text);
        return false;
    }
    value = static_cast<int32_t>(number);
    return true;
}

bool real(const Arguments& a, int keyword, float& value) {
    if (!a.given[keyword]) return true;
    const double number = PyFloat_AsDouble(a.given[keyword]);
    value = static_cast<float>(number);
    return number != -1 || !PyErr_Occurred();
}

bool alpha(const Binding& b, const Arguments& a, catalog::Call& call) {
    call.alpha = b.opaque;
    if (!a.given[aval]) return true;
    if (b.function->to == catalog::Element::f32) {
        float value = 1;
        if (!real(a, aval, value)) return false;
        call.alpha = std::bit_cast<uint32_t>(value);
        return true;
    }
    int32_t value = 0;
    const bool isSigned = b.function->to == catalog::Element::s16;
    const int64_t highest = isSigned ? INT16_MAX : b.function->to == catalog::Element::u8 ? UINT8_MAX : UINT16_MAX;
    if (!integer(b, a, aval, value, isSigned ? INT16_MIN : 0, highest)) return false;
    call.alpha = static_cast<uint32_t>(value);
    return true;
}

// Numbers in any nesting, as a matrix has them in rows.
bool flatten(PyObject* object, std::vector<double>& numbers) {
    if (PyFloat_Check(object) || PyLong_Check(object) || !PySequence_Check(object) || PyUnicode_Check(object)) {
        numbers.push_back(PyFloat_AsDouble(object));
        return numbers.size() <= 64 && !PyErr_Occurred();
    }
    PyObject* const items = PySequence_Tuple(object);
    bool isGood = items;
    for (Py_ssize_t i = 0; isGood && i < PyTuple_GET_SIZE(items) && numbers.size() <= 64; ++i) {
        if (Py_EnterRecursiveCall(" in a list of numbers"))
            isGood = false;
        else {
            isGood = flatten(PyTuple_GET_ITEM(items, i), numbers);
            Py_LeaveRecursiveCall();
        }
    }
    Py_XDECREF(items);
    return isGood;
}

bool coefficients(const Binding& b, Arguments& a, catalog::Call& call) {
    const int count = b.function->coefficientCount;
    if (!count) return true;
    PyObject* const given = a.given[matrix] ? a.given[matrix] : a.given[coeffs];
    if (!given) {
        PyErr_Format(PyExc_TypeError, "%s() missing 1 required keyword argument: '%s'", b.method.ml_name, b.coefficients);
        return false;
    }
    std::vector<double> numbers;
    if (!flatten(given, numbers) && PyErr_Occurred()) return false;
    if (static_cast<int>(numbers.size()) != count) {
        PyObject* const text = PyUnicode_FromFormat("must have %d numbers", count);
        if (text) raise(b, b.coefficients, -1, text, nullptr);
        Py_XDECREF(text);
        return false;
    }
    for (int i = 0; i < count; ++i) {
        a.floats[i] = static_cast<float>(numbers[i]);
        if (i < 3) a.doubles[i] = numbers[i];
    }
    call.coefficients = b.function->takesDoubles ? static_cast<const void*>(a.doubles) : a.floats;
    return true;
}

// Middle and lower slices read up to three rows above them, and arrays have whole pairs.
bool slice(const Binding& b, Arguments& a, catalog::Call& call) {
    if (!integer(b, a, layout, call.slice) || !integer(b, a, above, a.above, 0)) return false;
    const bool looksUp = call.slice == zelSliceMiddle || call.slice == zelSliceBottom;
    if (a.above % 2 != 0) return refuse(b, "above", "must be even");
    if (looksUp && a.above < 4) return refuse(b, "above", "must be 4 or more, for such a slice looks at the rows above it");
    return true;
}

// What a word may stand for instead of its number, from 0 on.
template <size_t count>
bool named(const Binding& b, const Arguments& a, Keyword keyword, const char* const (&names)[count], const char* refusal,
           int32_t& value) {
    if (!a.given[keyword] || !PyUnicode_Check(a.given[keyword])) return integer(b, a, keyword, value);
    for (size_t i = 0; i < count; ++i) {
        if (PyUnicode_CompareWithASCIIString(a.given[keyword], names[i]) != 0) continue;
        value = static_cast<int32_t>(i);
        return true;
    }
    return refuse(b, keywordNames[keyword], refusal);
}

// As the formats of mosaics write it.
bool gridOf(const Binding& b, const Arguments& a, int32_t& value) {
    static_assert(zelBayerBGGR == 0 && zelBayerRGGB == 1 && zelBayerGBRG == 2 && zelBayerGRBG == 3);
    return named(b, a, grid, {"bggr", "rggb", "gbrg", "grbg"}, "must be one of bggr, rggb, gbrg and grbg, or their number",
                 value);
}

bool ditherOf(const Binding& b, const Arguments& a, int32_t& value) {
    static_assert(zelDitherNone == 0 && zelDitherFS == 1 && zelDitherJJN == 2 && zelDitherStucki == 3 && zelDitherBayer == 4);
    return named(b, a, dtype, {"none", "fs", "jjn", "stucki", "bayer"},
                 "must be one of none, fs, jjn, stucki and bayer, or their number", value);
}

bool mosaic(const Binding& b, const Arguments& a, catalog::Call& call, ZelSize whole) {
    if (!a.given[grid]) {
        PyErr_Format(PyExc_TypeError, "%s() missing 1 required keyword argument: 'grid'", b.method.ml_name);
        return false;
    }
    if (!gridOf(b, a, call.grid)) return false;
    call.region = {0, 0, whole.width, whole.height};
    if (!a.given[region] || a.given[region] == Py_None) return true;
    PyObject* const items = PySequence_Tuple(a.given[region]);
    if (!items) return false;
    const bool isParsed = PyArg_ParseTuple(items, "iiii;region must be x, y, width, height", &call.region.x, &call.region.y,
                                           &call.region.width, &call.region.height);
    Py_DECREF(items);
    if (!isParsed) return false;
    const auto& [x, y, width, height] = call.region;
    if (x < 0 || y < 0 || width < 1 || height < 1 || x > whole.width - width || y > whole.height - height)
        return refuse(b, "region", "must lie inside the image");
    return true;
}

bool extras(const Binding& b, Arguments& a, catalog::Call& call) {
    const Function& f = *b.function;
    call.levels = b.levels;
    if (f.takes(Extra::alpha) && !alpha(b, a, call)) return false;
    if (f.takes(Extra::range) && (!real(a, vMin, call.lowest) || !real(a, vMax, call.highest))) return false;
    if (f.takes(Extra::slice) && !slice(b, a, call)) return false;
    return integer(b, a, noise, call.noise) && ditherOf(b, a, call.dither) && integer(b, a, levels, call.levels) &&
           integer(b, a, bitOffset, call.bitOffset) && integer(b, a, threshold, call.threshold, 0, 255) &&
           coefficients(b, a, call);
}

// The planes below the rows that a slice looks up to.
void moveDown(const ImageForm& form, catalog::Side& side, int32_t rows) {
    for (int i = 0; i < form.planeCount; ++i)
        side.planes[i] = static_cast<uint8_t*>(side.planes[i]) + int64_t{rows / form.planes[i].siteHeight} * side.steps[i];
}

// By copies with room behind their rows, for a function that goes beyond the region.
ZelStatus callWithRoom(const Binding& b, const catalog::Call& call) {
    const ZelSize wide{call.size.width + 2, call.size.height};
    catalog::Call roomy = call;
    std::unique_ptr<uint8_t[]> memory[8];
    const auto lay = [&](const ImageForm& form, catalog::Side& side, std::unique_ptr<uint8_t[]>* held) {
        for (int i = 0; i < form.planeCount; ++i) {
            const int64_t step = form.planes[i].rowBytes(wide);
            held[i].reset(new (std::nothrow) uint8_t[static_cast<size_t>(step * form.planes[i].rows(wide))]());
            if (!held[i] || step > INT32_MAX) return false;
            copyRows(form.planes[i], call.size, side.planes[i], side.steps[i], held[i].get(), step);
            side.planes[i] = held[i].get();
            side.steps[i] = static_cast<int32_t>(step);
        }
        return true;
    };
    if (!lay(b.source, roomy.source, memory) || !lay(b.target, roomy.destination, memory + 4)) return zelStsMemAllocErr;
    const ZelStatus status = b.function->call(roomy);
    for (int i = 0; status >= 0 && i < b.target.planeCount; ++i)
        copyRows(b.target.planes[i], call.size, roomy.destination.planes[i], roomy.destination.steps[i],
                 call.destination.planes[i], call.destination.steps[i]);
    return status;
}

const Constant* constantOf(ZelStatus status) {
    for (const Constant& c : statuses())
        if (c.value == status) return &c;
    return nullptr;
}

// The argument that an error is about.
const char* argumentOf(const Binding& b, const catalog::Call& call, ZelStatus status) {
    switch (status) {
        case zelStsStepErr:
            return b.function->sourcePlanes && call.source.steps[0] > 0 ? "out" : "source";
        case zelStsBadArgErr:
            return b.function->takes(Extra::grid) ? "grid" : "source";
        case zelStsRangeErr:
            return "vMax";
        case zelStsDitherLevelsErr:
            return "levels";
        case zelStsNoiseValErr:
            return "noise";
        case zelStsDitherTypeErr:
            return "dtype";
        case zelStsSizeErr:
            return b.function->takes(Extra::threshold) && call.bitOffset < 0 ? "dstBitOffset" : "source";
        default:
            return "source";
    }
}

// False with an exception: of an error, or of a warning that the program makes one.
bool report(const Binding& b, const catalog::Call& call, ZelStatus status) {
    if (status == zelStsNoErr) return true;
    const Constant* const constant = constantOf(status);
    const char* const name = constant ? constant->name : "a status without a name";
    if (status > 0)
        return PyErr_WarnFormat(warningType, 1, "%s: %s: %s", b.method.ml_name, name, constant ? constant->meaning : "") == 0;
    PyObject* const text = PyUnicode_FromFormat("%s (%d): %s", name, status, constant ? constant->meaning : "");
    if (text) raise(b, argumentOf(b, call, status), -1, text, constant);
    Py_XDECREF(text);
    return false;
}

bool checkOverlap(const Binding& b, const Image& from, const Image& to) {
    int other = 0;
    const int twice = b.target.planeCount > 1 ? to.overlapOfPlanes(&other) : -1;
    if (twice >= 0) return refuse(b, {"out", twice, PyUnicode_FromFormat("shares memory with plane %d", other)});
    if (b.function->worksInPlace && from.isSameAs(to)) return true;
    const int plane = from.overlap(to, &other);
    if (plane < 0) return true;
    return refuse(b, {"out", b.target.planeCount > 1 ? other : -1,
                      PyUnicode_FromString(b.function->worksInPlace ? "shares memory with source without being the same image"
                                                                    : "shares memory with source")});
}

// Where a call may leave pixels of its destination alone.
bool leavesSome(const Function& f, ZelSize size) {
    return f.alpha != catalog::Alpha::written || f.takes(Extra::reduction) || f.takes(Extra::slice) || size.width % 8 != 0 ||
           size.height % 8 != 0;
}

PyObject* run(const Binding& b, Arguments& a) {
    const Function& f = *b.function;
    Image from, to;
    Complaint complaint{};
    catalog::Call call;
    if (f.sourcePlanes == 0) {
        if (!to.take(a.given[source], b.target, "source", true, nullptr, complaint)) return refuse(b, complaint), nullptr;
        int other = 0;
        const int twice = b.target.planeCount > 1 ? to.overlapOfPlanes(&other) : -1;
        if (twice >= 0) return refuse(b, {"source", twice, PyUnicode_FromFormat("shares memory with plane %d", other)}), nullptr;
        call.size = to.size();
    } else {
        if (!from.take(a.given[source], b.source, "source", false, nullptr, complaint)) return refuse(b, complaint), nullptr;
        call.size = from.size();
    }
    if (!extras(b, a, call)) return nullptr;
    ZelSize written = call.size;
    if (f.takes(Extra::grid)) {
        if (!mosaic(b, a, call, call.size)) return nullptr;
        written = {call.region.width, call.region.height};
    }
    if (f.takes(Extra::threshold)) {
        if (written.width > INT32_MAX - 8) return refuse(b, "source", "is too wide"), nullptr;
        written.width += call.bitOffset > 0 ? call.bitOffset % 8 : 0;
    }
    if (f.beyond == catalog::Beyond::notAWord && catalog::goesBeyond(f.beyond, call.size))
        return refuse(b, "source", "must be 2 or more pixels wide, for one alone doesn't become a word"), nullptr;
    if (f.sourcePlanes && a.given[out]) {
        if (!to.take(a.given[out], b.target, "out", true, &written, complaint)) return refuse(b, complaint), nullptr;
        if (!checkOverlap(b, from, to)) return nullptr;
        if (f.needsEqualSteps && to.side().steps[1] != to.side().steps[2] && call.size.height > 1)
            return refuse(b, "out", "must have both planes of chroma with one step"), nullptr;
    } else if (f.sourcePlanes && !to.make(b.target, written, leavesSome(f, call.size))) {
        return nullptr;
    }
    call.source = from.side();
    call.destination = to.side();
    if (f.takes(Extra::slice)) {
        if (a.above > call.size.height) return refuse(b, "above", "must not be more than the rows of the image"), nullptr;
        moveDown(b.source, call.source, a.above);
        moveDown(b.target, call.destination, a.above);
        call.size.height -= a.above;
    }
    if (f.takes(Extra::temporary)) {
        const int64_t step = f.temporaryStep(call.region.width);
        if (step > INT32_MAX) return refuse(b, "region", "is too wide"), nullptr;
        a.temporary.reset(new (std::nothrow) uint8_t[static_cast<size_t>(step * Function::temporaryRows)]);
        if (!a.temporary) return PyErr_NoMemory();
        call.temporary = a.temporary.get();
        call.temporaryStep = static_cast<int32_t>(step);
    }
    PyThreadState* const thread = PyEval_SaveThread();
    const ZelStatus status = catalog::goesBeyond(f.beyond, call.size) ? callWithRoom(b, call) : f.call(call);
    PyEval_RestoreThread(thread);
    if (status == zelStsNoOperationWarn && !a.given[out] && f.sourcePlanes) to.fillWithZeros();
    if (!report(b, call, status)) return nullptr;
    return to.result();
}

PyObject* callFunction(PyObject* self, PyObject* const* values, Py_ssize_t count, PyObject* names) {
    const auto& b = *static_cast<const Binding*>(PyCapsule_GetPointer(self, nullptr));
    Arguments arguments;
    if (!sort(b, values, count, names, arguments)) return nullptr;
    PyObject* const result = run(b, arguments);
    return result;
}

ImageForm imageForm(const catalog::Format& format, const std::array<int8_t, 4>& order, int steps) {
    ImageForm form{.planeCount = format.planeCount, .stepCount = steps};
    for (int i = 0; i < form.planeCount; ++i) form.planes[i] = formOf(format.planes[order[i]], format.element, i == 0);
    return form;
}

std::vector<Binding>& bindings() {
    static std::vector<Binding> all;
    return all;
}

void bindAll() {
    if (!bindings().empty()) return;
    const auto functions = catalog::functions();
    bindings().resize(functions.size());
    for (const catalog::Conversion& c : catalog::conversions()) {
        Binding& b = bindings()[c.function];
        if (b.function) continue;
        const Function& f = functions[c.function];
        b = {.function = &f,
             .source = imageForm(catalog::formats()[c.source], c.sourceOrder, f.sourceSteps),
             .target = imageForm(catalog::formats()[c.target], c.targetOrder, f.targetSteps),
             .opaque = static_cast<uint32_t>(catalog::opaque(f.to)),
             .levels = catalog::bytesOf(f.to) == 1 ? 256 : 65536,
             .coefficients = coefficientNames()[c.function],
             .method = {f.name.data(), reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(callFunction)),
                        METH_FASTCALL | METH_KEYWORDS, docstrings()[c.function]}};
    }
}

bool addConstants(PyObject* module, std::span<const Constant> constants) {
    for (const Constant& c : constants)
        if (PyModule_AddIntConstant(module, c.name, c.value) < 0) return false;
    return true;
}

}  // namespace

bool addFunctions(PyObject* module) {
    bindAll();
    for (int i = 0; i < keywordCount; ++i)
        if (!(keywordObjects[i] = PyUnicode_InternFromString(keywordNames[i]))) return false;
    errorType =
        PyErr_NewExceptionWithDoc("zelcc.Error",
                                  "What a function refuses. function and argument name what it is about; status and status_name\n"
                                  "are the library's, or None where it wasn't called.",
                                  PyExc_ValueError, nullptr);
    warningType = PyErr_NewExceptionWithDoc("zelcc.StatusWarning", "A status of the library that tells of something left undone.",
                                            PyExc_UserWarning, nullptr);
    if (!errorType || !warningType || PyModule_AddObjectRef(module, "Error", errorType) < 0 ||
        PyModule_AddObjectRef(module, "StatusWarning", warningType) < 0 || !addConstants(module, statuses()) ||
        !addConstants(module, constants()))
        return false;
    PyObject* const name = PyUnicode_FromString("zelcc");
    bool isGood = name;
    for (Binding& b : bindings()) {
        if (!isGood) break;
        PyObject* const self = PyCapsule_New(&b, nullptr, nullptr);
        PyObject* const function = self ? PyCFunction_NewEx(&b.method, self, name) : nullptr;
        isGood = function && PyModule_AddObjectRef(module, b.method.ml_name, function) == 0;
        Py_XDECREF(self);
        Py_XDECREF(function);
    }
    Py_XDECREF(name);
    return isGood;
}

}  // namespace zelpy
