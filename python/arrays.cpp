#include "python/arrays.h"

#define NPY_NO_DEPRECATED_API NPY_1_7_API_VERSION
#define PY_ARRAY_UNIQUE_SYMBOL zelpy_array_api
#define NO_IMPORT_ARRAY
#include <numpy/arrayobject.h>

#include <algorithm>
#include <cstring>

namespace zelpy {
namespace {

constexpr int types[] = {NPY_UINT8, NPY_UINT8, NPY_INT8, NPY_UINT16, NPY_INT16, NPY_INT32, NPY_FLOAT32, NPY_FLOAT64, NPY_UINT32};
const char* const typeNames[] = {"uint8", "int8", "uint16", "int16", "int32", "float32", "float64"};

const char* nameOf(int type) {
    for (int i = 1; i < 8; ++i)
        if (types[i] == type) return typeNames[i - 1];
    return "?";
}

PyArrayObject* arrayOf(PyObject* object) { return reinterpret_cast<PyArrayObject*>(object); }

PyObject* shapeText(int64_t rows, int64_t columns, int channels) {
    return channels
               ? PyUnicode_FromFormat("(%lld, %lld, %d)", static_cast<long long>(rows), static_cast<long long>(columns), channels)
               : PyUnicode_FromFormat("(%lld, %lld)", static_cast<long long>(rows), static_cast<long long>(columns));
}

PyObject* shapeText(const PlaneForm& form, ZelSize size) { return shapeText(form.rows(size), form.columns(size), form.channels); }

bool isDense(const PlaneForm& form, PyArrayObject* array) {
    const npy_intp* const strides = PyArray_STRIDES(array);
    const npy_intp* const dims = PyArray_DIMS(array);
    const int pixel = form.elementBytes * (form.channels ? form.channels : 1);
    return (dims[1] < 2 || strides[1] == pixel) && (form.channels < 2 || strides[2] == form.elementBytes);
}

struct Extent {
    const uint8_t* first;
    const uint8_t* end;
};

Extent extentOf(const PlaneForm& form, ZelSize size, const void* data, int64_t step) {
    const auto* const begin = static_cast<const uint8_t*>(data);
    const int64_t last = std::max<int64_t>(form.rows(size) - 1, 0) * step;
    return {begin + std::min<int64_t>(last, 0), begin + std::max<int64_t>(last, 0) + form.rowBytes(size)};
}

}  // namespace

PlaneForm formOf(const catalog::Plane& plane, catalog::Element element, bool isFirst) {
    PlaneForm form{.elementBytes = catalog::bytesOf(element), .type = types[static_cast<int>(element)]};
    const int samples = plane.samples(element);
    if (isFirst && samples % plane.width == 0 && element != catalog::Element::u1) {
        // The first plane has all pixels, though packed 4:2:2 has them in pairs.
        form.channels = samples / plane.width;
    } else {
        form.siteWidth = plane.width;
        form.siteHeight = plane.height;
        form.channels = samples;
    }
    if (form.channels == 1) form.channels = 0;
    return form;
}

Image::~Image() {
    for (PyObject* plane : planes_) Py_XDECREF(plane);
}

bool Image::takePlane(PyObject* object, int i, const char* name, bool isWritten, Complaint& complaint) {
    const PlaneForm& form = form_->planes[i];
    const auto complain = [&](PyObject* text) {
        complaint = {name, form_->planeCount > 1 ? i : -1, text};
        return false;
    };
    if (PyArray_Check(object)) {
        Py_INCREF(object);
    } else if (isWritten || PyList_Check(object) || PyTuple_Check(object)) {
        return complain(PyUnicode_FromFormat("must be an array, not %.80s", Py_TYPE(object)->tp_name));
    } else {
        object = PyArray_FromAny(object, nullptr, 0, 0, 0, nullptr);
        if (!object) return false;
    }
    planes_[i] = object;
    PyArrayObject* const array = arrayOf(object);
    if (PyArray_TYPE(array) != form.type)
        return complain(PyUnicode_FromFormat("must be of %s, not %S", nameOf(form.type), PyArray_DESCR(array)));
    if (!PyArray_ISNOTSWAPPED(array))
        return complain(
            PyUnicode_FromFormat("must be in the machine's order of bytes, as astype('%s') makes it", nameOf(form.type)));
    const npy_intp* const dims = PyArray_DIMS(array);
    const int axes = PyArray_NDIM(array);
    const bool hasAxes = axes == (form.channels ? 3 : 2) && (!form.channels || dims[2] == form.channels);
    if (i == 0 && size_.width < 0 && hasAxes) {
        if (dims[0] > INT32_MAX || dims[1] > INT32_MAX)
            return complain(PyUnicode_FromString("must have no more than 2147483647 rows and columns"));
        size_ = {static_cast<int32_t>(dims[1] * form.siteWidth), static_cast<int32_t>(dims[0])};
    }
    if (!hasAxes || dims[0] != form.rows(size_) || dims[1] != form.columns(size_)) {
        PyObject* const wanted = size_.width < 0 ? form.channels ? PyUnicode_FromFormat("(height, width, %d)", form.channels)
                                                                 : PyUnicode_FromString("(height, width)")
                                                 : shapeText(form, size_);
        PyObject* const given = PyArray_IntTupleFromIntp(axes, const_cast<npy_intp*>(dims));
        complain(wanted && given ? PyUnicode_FromFormat("must have the shape %U, not %S", wanted, given) : nullptr);
        Py_XDECREF(wanted);
        Py_XDECREF(given);
        return false;
    }
    if (isWritten && !PyArray_ISWRITEABLE(array)) return complain(PyUnicode_FromString("can't be written, it is read-only"));
    if (!isDense(form, array))
        return complain(PyUnicode_FromString("must have pixels without gaps in the rows, as numpy.ascontiguousarray makes them"));
    side_.planes[i] = PyArray_DATA(array);
    return true;
}

bool Image::takeSteps(const char* name, bool isWritten, Complaint& complaint) {
    for (int i = 0; i < form_->planeCount; ++i) {
        const PlaneForm& form = form_->planes[i];
        const auto complain = [&](PyObject* text) {
            complaint = {name, form_->planeCount > 1 ? i : -1, text};
            return false;
        };
        const int64_t rowBytes = form.rowBytes(size_);
        int64_t step = form.rows(size_) < 2 ? rowBytes : PyArray_STRIDE(arrayOf(planes_[i]), 0);
        if (form_->stepCount == 0 && step != rowBytes)
            return complain(PyUnicode_FromString("must be contiguous, for this function takes no steps"));
        if (std::abs(step) > INT32_MAX) return complain(PyUnicode_FromString("has rows too far apart"));
        if (step % form.elementBytes != 0)
            return complain(PyUnicode_FromString("has rows that are no whole number of samples apart"));
        if (std::abs(step) < rowBytes && (isWritten || step != 0)) return complain(PyUnicode_FromString("has rows that overlap"));
        side_.steps[i] = static_cast<int32_t>(step);
    }
    if (form_->stepCount != 1) return true;
    for (int i = 1; i < form_->planeCount; ++i)
        if (side_.steps[i] != side_.steps[0]) {
            complaint = {name, i,
                         PyUnicode_FromFormat("has rows %d bytes apart and the first plane %d, but all planes must have one step",
                                              side_.steps[i], side_.steps[0])};
            return false;
        }
    return true;
}

bool Image::take(PyObject* argument, const ImageForm& form, const char* name, bool isWritten, const ZelSize* size,
                 Complaint& complaint) {
    form_ = &form;
    size_ = size ? *size : ZelSize{-1, -1};
    if (form.planeCount == 1) return takePlane(argument, 0, name, isWritten, complaint) && takeSteps(name, isWritten, complaint);
    if (!PyTuple_Check(argument) && !PyList_Check(argument)) {
        complaint = {
            name, -1,
            PyUnicode_FromFormat("must be a list or tuple of %d planes, not %.80s", form.planeCount, Py_TYPE(argument)->tp_name)};
        return false;
    }
    PyObject* const items = PySequence_Tuple(argument);  // which no other thread changes
    if (!items) return false;
    bool isGood = true;
    if (PyTuple_GET_SIZE(items) != form.planeCount) {
        complaint = {name, -1, PyUnicode_FromFormat("must have %d planes, not %zd", form.planeCount, PyTuple_GET_SIZE(items))};
        isGood = false;
    }
    for (int i = 0; isGood && i < form.planeCount; ++i)
        isGood = takePlane(PyTuple_GET_ITEM(items, i), i, name, isWritten, complaint);
    Py_DECREF(items);
    return isGood && takeSteps(name, isWritten, complaint);
}

bool Image::make(const ImageForm& form, ZelSize size, bool ofZeros) {
    form_ = &form;
    size_ = size;
    for (int i = 0; i < form.planeCount; ++i) {
        const PlaneForm& plane = form.planes[i];
        npy_intp dims[] = {static_cast<npy_intp>(plane.rows(size)), static_cast<npy_intp>(plane.columns(size)), plane.channels};
        const int axes = plane.channels ? 3 : 2;
        planes_[i] = ofZeros ? PyArray_ZEROS(axes, dims, plane.type, 0) : PyArray_SimpleNew(axes, dims, plane.type);
        if (!planes_[i]) return false;
        side_.planes[i] = PyArray_DATA(arrayOf(planes_[i]));
        if (plane.rowBytes(size) > INT32_MAX) {
            PyErr_SetString(PyExc_ValueError, "rows of the result would be too far apart");
            return false;
        }
        side_.steps[i] = static_cast<int32_t>(plane.rowBytes(size));
    }
    return true;
}

void Image::fillWithZeros() const {
    for (int i = 0; i < form_->planeCount; ++i)
        std::memset(side_.planes[i], 0, static_cast<size_t>(form_->planes[i].rowBytes(size_) * form_->planes[i].rows(size_)));
}

PyObject* Image::result() const {
    if (form_->planeCount == 1) return Py_NewRef(planes_[0]);
    PyObject* const tuple = PyTuple_New(form_->planeCount);
    for (int i = 0; tuple && i < form_->planeCount; ++i) PyTuple_SET_ITEM(tuple, i, Py_NewRef(planes_[i]));
    return tuple;
}

bool Image::isSameAs(const Image& other) const {
    for (int i = 0; i < form_->planeCount; ++i)
        if (side_.planes[i] != other.side_.planes[i] || side_.steps[i] != other.side_.steps[i]) return false;
    return form_->planeCount == other.form_->planeCount;
}

// Rows of one image may lie between those of another, as the fields of a frame do: each row is compared with those beside it.
bool Image::share(int i, const Image& other, int j) const {
    const PlaneForm& form = form_->planes[i];
    const PlaneForm& theirs = other.form_->planes[j];
    const Extent a = extentOf(form, size_, side_.planes[i], side_.steps[i]);
    const Extent b = extentOf(theirs, other.size_, other.side_.planes[j], other.side_.steps[j]);
    if (a.end <= b.first || b.end <= a.first) return false;
    const int64_t stepA = std::max(std::abs(int64_t{side_.steps[i]}), int64_t{1});
    const int64_t stepB = std::max(std::abs(int64_t{other.side_.steps[j]}), int64_t{1});
    const int64_t rowsA = side_.steps[i] ? form.rows(size_) : 1, rowsB = other.side_.steps[j] ? theirs.rows(other.size_) : 1;
    for (int64_t rowA = 0, rowB = 0; rowA < rowsA && rowB < rowsB;) {
        const uint8_t* const one = a.first + rowA * stepA;
        const uint8_t* const two = b.first + rowB * stepB;
        if (one + form.rowBytes(size_) <= two)
            ++rowA;
        else if (two + theirs.rowBytes(other.size_) <= one)
            ++rowB;
        else
            return true;
    }
    return false;
}

int Image::overlap(const Image& other, int* plane) const {
    for (int i = 0; i < form_->planeCount; ++i)
        for (int j = 0; j < other.form_->planeCount; ++j)
            if (share(i, other, j)) {
                *plane = j;
                return i;
            }
    return -1;
}

int Image::overlapOfPlanes(int* plane) const {
    for (int i = 0; i < form_->planeCount; ++i)
        for (int j = 0; j < i; ++j)
            if (share(i, *this, j)) {
                *plane = j;
                return i;
            }
    return -1;
}

void copyRows(const PlaneForm& form, ZelSize size, const void* from, int64_t fromStep, void* to, int64_t toStep) {
    for (int64_t y = 0; y < form.rows(size); ++y)
        std::memcpy(static_cast<uint8_t*>(to) + y * toStep, static_cast<const uint8_t*>(from) + y * fromStep,
                    static_cast<size_t>(form.rowBytes(size)));
}

}  // namespace zelpy
