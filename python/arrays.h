// NumPy arrays as the images of a call: what shape an image of a format has, and whether an array is one.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>

#include "catalog/registry.h"

namespace zelpy {

// What a plane is as an array, of the size of its image. A bit image has bytes of eight pixels.
struct PlaneForm {
    int siteWidth = 1, siteHeight = 1;  // pixels that an element of the first two axes serves
    int channels = 0;                   // of the third axis, 0 without one
    int elementBytes = 1;
    int type = 0;  // NumPy's number

    int64_t rows(ZelSize size) const { return (int64_t{size.height} + siteHeight - 1) / siteHeight; }
    int64_t columns(ZelSize size) const { return (int64_t{size.width} + siteWidth - 1) / siteWidth; }
    int64_t rowBytes(ZelSize size) const { return columns(size) * (channels ? channels : 1) * elementBytes; }
};

PlaneForm formOf(const catalog::Plane& plane, catalog::Element element, bool isFirst);

struct ImageForm {
    int planeCount = 0;
    int stepCount = 0;  // 0 if rows follow each other without a gap, 1 if all planes have the same step
    PlaneForm planes[4]{};
};

// What is wrong with an argument. The texts are whole when they reach Python.
struct Complaint {
    const char* argument;
    int plane;  // -1 where the argument is no list of planes
    PyObject* text;
};

// An argument of a call, kept alive while others may run.
class Image {
  public:
    Image() = default;
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
    ~Image();

    // Takes the arrays of an argument. The size of the image is that of the first plane, if none is given. False with a Python
    // exception, or with a complaint.
    bool take(PyObject* argument, const ImageForm& form, const char* name, bool isWritten, const ZelSize* size,
              Complaint& complaint);
    // Makes arrays; of zeros if asked to.
    bool make(const ImageForm& form, ZelSize size, bool ofZeros);
    void fillWithZeros() const;

    ZelSize size() const { return size_; }
    const catalog::Side& side() const { return side_; }
    PyObject* plane(int i) const { return planes_[i]; }
    // A new reference to the array, or to a tuple of the planes.
    PyObject* result() const;

    bool isSameAs(const Image& other) const;
    // The numbers of the first planes that share memory, -1 if none do.
    int overlap(const Image& other, int* plane) const;
    int overlapOfPlanes(int* plane) const;

  private:
    bool takePlane(PyObject* array, int i, const char* name, bool isWritten, Complaint& complaint);
    bool takeSteps(const char* name, bool isWritten, Complaint& complaint);
    bool share(int i, const Image& other, int j) const;

    const ImageForm* form_ = nullptr;
    ZelSize size_{};
    catalog::Side side_;
    PyObject* planes_[4] = {};
};

// Copies the rows of a plane.
void copyRows(const PlaneForm& form, ZelSize size, const void* from, int64_t fromStep, void* to, int64_t toStep);

}  // namespace zelpy
