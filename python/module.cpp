// The extension module: all functions by their C names, formats, and the ways between them.
#include "python/function.h"

#define NPY_NO_DEPRECATED_API NPY_1_7_API_VERSION
#define PY_ARRAY_UNIQUE_SYMBOL zelpy_array_api
#include <numpy/arrayobject.h>

#include <algorithm>
#include <string>
#include <vector>

#include "catalog/colours.h"

namespace zelpy {
namespace {

PyObject* text(std::string_view view) { return PyUnicode_FromStringAndSize(view.data(), static_cast<Py_ssize_t>(view.size())); }

PyObject* planeObject(const catalog::Format& format, int i) {
    const catalog::Plane& plane = format.planes[i];
    const PlaneForm form = formOf(plane, format.element, i == 0);
    return Py_BuildValue("(Niii)", text(plane.channels), form.siteWidth, form.siteHeight, form.channels);
}

// (name, title, dtype, planes, FFmpeg's name), a plane being (channels, width and height that a sample serves, length of the last
// axis).
PyObject* formatObject(const catalog::Format& format) {
    PyObject* const planes = PyTuple_New(format.planeCount);
    for (int i = 0; planes && i < format.planeCount; ++i) {
        PyObject* const plane = planeObject(format, i);
        if (!plane) {
            Py_DECREF(planes);
            return nullptr;
        }
        PyTuple_SET_ITEM(planes, i, plane);
    }
    PyArray_Descr* const descr = PyArray_DescrFromType(formOf(format.planes[0], format.element, true).type);
    return Py_BuildValue("(NNNNNi)", text(format.name), text(format.title), descr, planes, text(format.ffmpegName), format.grid);
}

PyObject* allFormats(PyObject*, PyObject*) {
    PyObject* const list = PyList_New(0);
    for (const catalog::Format& format : catalog::formats()) {
        PyObject* const object = list ? formatObject(format) : nullptr;
        const bool isGood = object && PyList_Append(list, object) == 0;
        Py_XDECREF(object);
        if (!isGood) {
            Py_XDECREF(list);
            return nullptr;
        }
    }
    return list;
}

PyObject* orderObject(const std::array<int8_t, 4>& order, int count) {
    PyObject* const tuple = PyTuple_New(count);
    for (int i = 0; tuple && i < count; ++i) PyTuple_SET_ITEM(tuple, i, PyLong_FromLong(order[i]));
    return tuple;
}

PyObject* stepObject(const catalog::Step& step) {
    const catalog::Function* const function = step.conversion ? &catalog::functions()[step.conversion->function] : nullptr;
    PyObject* const name = function ? text(function->name) : step.isByVideo ? text("zelvConvert") : Py_NewRef(Py_None);
    return Py_BuildValue("(NNNNNO)", name, text(step.source->name), text(step.target->name),
                         orderObject(step.sourceOrder, step.source->planeCount),
                         orderObject(step.targetOrder, step.target->planeCount),
                         !function || function->alpha == catalog::Alpha::written ? Py_True : Py_False);
}

// What is said of the sides' colours, and the method; nothing is said of a range by an empty text.
struct Wanted {
    const char *matrix[2], *range[2], *location[2], *method;

    catalog::Colour colour(int side) const {
        constexpr std::string_view locations[] = {"left", "center", "topleft"};  // in the order of zelvideo.h
        const auto known = std::ranges::find(locations, location[side]);
        catalog::Colour c{.matrix = matrix[side], .location = static_cast<int32_t>(known - std::begin(locations))};
        if (*range[side]) c.isFullRange = std::string_view("full") == range[side];
        return c;
    }
    catalog::Colours colours() const { return {colour(0), colour(1)}; }
};

// (steps, width and height of whole sites), or None where no way leads.
PyObject* findPath(PyObject*, PyObject* arguments) {
    const char *source, *target;
    Wanted w{};
    if (!PyArg_ParseTuple(arguments, "ss(ss)(ss)(ss)s", &source, &target, &w.matrix[0], &w.matrix[1], &w.range[0], &w.range[1],
                          &w.location[0], &w.location[1], &w.method))
        return nullptr;
    const auto from = catalog::formatNumber(source), to = catalog::formatNumber(target);
    if (!from || !to) return PyErr_Format(PyExc_ValueError, "no format is named '%s'", from ? target : source);
    const auto found =
        catalog::path(catalog::formats()[*from], catalog::formats()[*to], w.colours(), catalog::byMethod(w.method));
    if (!found) Py_RETURN_NONE;
    PyObject* const steps = PyTuple_New(static_cast<Py_ssize_t>(found->size()));
    for (size_t i = 0; steps && i < found->size(); ++i) {
        PyObject* const step = stepObject((*found)[i]);
        if (!step) {
            Py_DECREF(steps);
            return nullptr;
        }
        PyTuple_SET_ITEM(steps, static_cast<Py_ssize_t>(i), step);
    }
    const catalog::Site sites = catalog::wholeSites(*found);
    return Py_BuildValue("(Nii)", steps, sites.width, sites.height);
}

ImageForm wholeForm(const catalog::Format& format) {
    ImageForm form{.planeCount = format.planeCount, .stepCount = format.planeCount};
    for (int i = 0; i < form.planeCount; ++i) form.planes[i] = formOf(format.planes[i], format.element, i == 0);
    return form;
}

// Both images of a step, which are made by the package itself.
struct Pair {
    const catalog::Format *source, *target;
    Image images[2];

    bool take(PyObject* from, PyObject* to) {
        Complaint complaint{};
        const ImageForm forms[] = {wholeForm(*source), wholeForm(*target)};
        const auto takeOne = [&](int i, const ZelSize* size) {
            return images[i].take(i ? to : from, forms[i], i ? "out" : "source", i == 1, size, complaint);
        };
        // The width of several pixels an element is known of the other side.
        const int first = forms[0].planes[0].siteWidth > 1;
        bool isTaken = takeOne(first, nullptr);
        const ZelSize size = isTaken ? images[first].size() : ZelSize{};
        isTaken = isTaken && takeOne(1 - first, &size);
        if (!isTaken && !PyErr_Occurred()) PyErr_Format(PyExc_ValueError, "%s: %U", complaint.argument, complaint.text);
        return isTaken;
    }
};

// Between formats and colours that libzelvideo describes.
PyObject* convertVideo(PyObject*, PyObject* arguments) {
    const char *source, *target;
    PyObject *from, *to;
    Wanted w{};
    if (!PyArg_ParseTuple(arguments, "sOsO(ss)(ss)(ss)s", &source, &from, &target, &to, &w.matrix[0], &w.matrix[1], &w.range[0],
                          &w.range[1], &w.location[0], &w.location[1], &w.method))
        return nullptr;
    const auto a = catalog::formatNumber(source), b = catalog::formatNumber(target);
    ZelvPlan plan;
    if (!a || !b ||
        catalog::makePlan(&plan, catalog::formats()[*a], catalog::formats()[*b], w.colours(), catalog::videoOptions(w.method)) !=
            zelStsNoErr)
        return PyErr_Format(PyExc_ValueError, "zelvMakePlan refuses %s to %s", source, target);
    Pair pair{&catalog::formats()[*a], &catalog::formats()[*b], {}};
    if (!pair.take(from, to)) return nullptr;
    const catalog::Side in = pair.images[0].side(), out = pair.images[1].side();
    std::array<const uint8_t*, 4> read{};
    std::array<uint8_t*, 4> written{};
    for (size_t i = 0; i < read.size(); ++i) {
        read[i] = static_cast<const uint8_t*>(in.planes[i]);
        written[i] = static_cast<uint8_t*>(out.planes[i]);
    }
    PyThreadState* const thread = PyEval_SaveThread();
    const ZelStatus status =
        zelvConvert(&plan, read.data(), in.steps.data(), written.data(), out.steps.data(), pair.images[0].size());
    PyEval_RestoreThread(thread);
    if (status != zelStsNoErr) return PyErr_Format(PyExc_ValueError, "zelvConvert refuses the images: status %d", status);
    Py_RETURN_NONE;
}

// Moves samples between formats that hold the same ones.
PyObject* rearrange(PyObject*, PyObject* arguments) {
    const char *source, *target;
    PyObject *from, *to;
    if (!PyArg_ParseTuple(arguments, "sOsO", &source, &from, &target, &to)) return nullptr;
    const auto a = catalog::formatNumber(source), b = catalog::formatNumber(target);
    if (!a || !b || !catalog::canRearrange(catalog::formats()[*a], catalog::formats()[*b]))
        return PyErr_Format(PyExc_ValueError, "samples of %s are none of %s", source, target);
    Pair pair{&catalog::formats()[*a], &catalog::formats()[*b], {}};
    if (!pair.take(from, to)) return nullptr;
    const auto& images = pair.images;
    const ZelSize size = images[0].size();
    for (const int number : {*a, *b})
        for (const catalog::Plane& p : catalog::formats()[number].usedPlanes())
            if (size.width % p.width != 0 || size.height % p.height != 0)
                return PyErr_Format(PyExc_ValueError, "the size must be one of whole sites of chroma");
    PyThreadState* const thread = PyEval_SaveThread();
    catalog::rearrange(catalog::formats()[*a], images[0].side(), catalog::formats()[*b], images[1].side(), size);
    PyEval_RestoreThread(thread);
    Py_RETURN_NONE;
}

// The version, and which names are public: all that begin without an underscore.
bool addNames(PyObject* module) {
    PyObject* const all = PyList_New(0);
    bool isGood = all != nullptr;
    PyObject *name, *value;
    for (Py_ssize_t i = 0; isGood && PyDict_Next(PyModule_GetDict(module), &i, &name, &value);)
        if (PyUnicode_ReadChar(name, 0) != '_') isGood = PyList_Append(all, name) == 0;
    isGood = isGood && PyList_Sort(all) == 0 && PyModule_AddObjectRef(module, "__all__", all) == 0;
    Py_XDECREF(all);
    return isGood && PyModule_AddStringConstant(module, "__version__", ZELCC_VERSION) == 0;
}

// At which rows an image may be cut and come out the same, whatever else the function is told; 0 if it may nowhere.
PyObject* rowsOfPart(PyObject*, PyObject* argument) {
    const char* const name = PyUnicode_AsUTF8(argument);
    if (!name) return nullptr;
    const catalog::Function* const f = catalog::findFunction(name);
    const auto rows = f ? std::ranges::minmax(f->rowsOfParts) : std::ranges::minmax_result<int8_t>{0, 0};
    return PyLong_FromLong(rows.min ? rows.max : 0);
}

// The end of a sentence about a word that is none of the names.
PyObject* suggestion(PyObject*, PyObject* arguments) {
    const char* word;
    PyObject* all;
    if (!PyArg_ParseTuple(arguments, "sO!", &word, &PyTuple_Type, &all)) return nullptr;
    std::vector<std::string_view> names;
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(all); ++i) {
        const char* const name = PyUnicode_AsUTF8(PyTuple_GET_ITEM(all, i));
        if (!name) return nullptr;
        names.emplace_back(name);
    }
    return text(catalog::suggestion(word, names));
}

PyMethodDef methods[] = {{"_formats", allFormats, METH_NOARGS, nullptr},
                         {"_path", findPath, METH_VARARGS, nullptr},
                         {"_convert_video", convertVideo, METH_VARARGS, nullptr},
                         {"_rearrange", rearrange, METH_VARARGS, nullptr},
                         {"_rows_of_part", rowsOfPart, METH_O, nullptr},
                         {"_suggestion", suggestion, METH_VARARGS, nullptr},
                         {}};

PyModuleDef definition{.m_base = PyModuleDef_HEAD_INIT,
                       .m_name = "zelcc._native",
                       .m_doc = "The functions of the library by their C names.",
                       .m_size = -1,
                       .m_methods = methods,
                       .m_slots = nullptr,
                       .m_traverse = nullptr,
                       .m_clear = nullptr,
                       .m_free = nullptr};

}  // namespace
}  // namespace zelpy

PyMODINIT_FUNC PyInit__native() {
    import_array();
    PyObject* const module = PyModule_Create(&zelpy::definition);
    if (module && !(zelpy::addFunctions(module) && zelpy::addNames(module))) {
        Py_DECREF(module);
        return nullptr;
    }
    return module;
}
