#include "half_size.h"

#include "float_picture.h"
#include "side_by_side.h"

HalfSize halfSize(const Picture& original) {
    HalfSize study;
    const FloatPicture video(original);
    FloatPicture light(original.size);
    if (!study.call("zeliGammaInv_32f_C3R, full size", original.size, [&] { return toLinearLight(video, light); })) return study;

    const FloatPicture halfLight = halved(light);
    FloatPicture halfVideo(halfLight.size);
    if (!study.call("zeliGammaFwd_32f_C3R, half size", halfLight.size, [&] { return toVideo(halfLight, halfVideo); }))
        return study;

    const Picture asStored = halved(video).bytes(), inLinearLight = halfVideo.bytes();
    study.difference = difference(asStored, inLinearLight);
    study.keep("half", beside(asStored, inLinearLight));
    study.keep("half-difference", amplifiedDifference(asStored, inLinearLight));
    study.keep("half-detail", detailBeside(asStored, inLinearLight));
    return study;
}
