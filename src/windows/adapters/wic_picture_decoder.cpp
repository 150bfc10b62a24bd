#include "windows/adapters/wic_picture_decoder.h"

#include "windows/adapters/jpeg_header.h"
#include "windows/base/native_path.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <exception>
#include <string>
#include <utility>

#include <windows.h>
// after windows.h
#include <shlwapi.h>
#include <wincodec.h>
#include <wrl/client.h>

namespace windows {
namespace {

using Microsoft::WRL::ComPtr;

// A decoder may hold the whole picture at three or four bytes a pixel, in the two gigabytes of a 32-bit process that
// belongs to the host. Larger ones are shown as a placeholder. The largest cameras make about 100 million pixels.
constexpr std::uint64_t kMostPixels = 120'000'000;

// The result of a failed call ends the decoding; decode() turns it into "no picture".
class DecodingFailed : public std::exception {};

void check(HRESULT result) {
    if (FAILED(result)) {
        throw DecodingFailed();
    }
}

struct Size {
    UINT width = 0;
    UINT height = 0;
};

// Of the EXIF orientations, 5 to 8 lay the picture on its side.
bool swapsSides(int orientation) {
    return orientation >= 5;
}

// The largest size of the same proportions within the limits, never larger than the picture.
Size fitted(Size source, Size limit) {
    const double scale = std::min(
        {1.0, static_cast<double>(limit.width) / source.width, static_cast<double>(limit.height) / source.height});
    const auto side = [scale](UINT length, UINT most) {
        return std::clamp(static_cast<UINT>(std::lround(length * scale)), 1U, most);
    };
    return {side(source.width, limit.width), side(source.height, limit.height)};
}

ComPtr<IStream> opened(const std::wstring& path) {
    ComPtr<IStream> stream; // shared in every way: a preview must not stand in another program's way
    check(SHCreateStreamOnFileEx(path.c_str(), STGM_READ | STGM_SHARE_DENY_NONE, 0, FALSE, nullptr, &stream));
    return stream;
}

// The first bytes of the file, which stays at its beginning.
std::string startOf(IStream* file) {
    std::string start(std::size_t{64} << 10U, '\0');
    ULONG count = 0;
    check(file->Read(start.data(), static_cast<ULONG>(start.size()), &count));
    check(file->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr));
    start.resize(count);
    return start;
}

bool isTooLarge(std::uint64_t pixels) {
    return pixels > kMostPixels;
}

ComPtr<IWICBitmapFrameDecode> firstFrame(IWICImagingFactory* factory, IStream* file) {
    ComPtr<IWICBitmapDecoder> decoder;
    check(factory->CreateDecoderFromStream(file, nullptr, WICDecodeMetadataCacheOnDemand, &decoder));
    ComPtr<IWICBitmapFrameDecode> frame;
    check(decoder->GetFrame(0, &frame));
    return frame;
}

ComPtr<IWICBitmapSource> converted(IWICImagingFactory* factory, IWICBitmapSource* source) {
    ComPtr<IWICFormatConverter> converter;
    check(factory->CreateFormatConverter(&converter));
    check(converter->Initialize(source, GUID_WICPixelFormat32bppPBGRA, WICBitmapDitherTypeNone, nullptr, 0.0,
                                WICBitmapPaletteTypeCustom));
    return converter;
}

ComPtr<IWICBitmapSource> scaled(IWICImagingFactory* factory, IWICBitmapSource* source, Size size) {
    ComPtr<IWICBitmapScaler> scaler;
    check(factory->CreateBitmapScaler(&scaler));
    check(scaler->Initialize(source, size.width, size.height, WICBitmapInterpolationModeFant));
    return scaler;
}

base::Picture pixelsOf(IWICBitmapSource* source, Size size) {
    base::Picture picture;
    picture.width = static_cast<int>(size.width);
    picture.height = static_cast<int>(size.height);
    picture.pixels.resize(std::size_t{size.width} * size.height);
    check(source->CopyPixels(nullptr, size.width * 4, static_cast<UINT>(picture.pixels.size() * 4),
                             reinterpret_cast<BYTE*>(picture.pixels.data())));
    return picture;
}

// The picture as the photographer saw it.
base::Picture turned(const base::Picture& in, int orientation) {
    const bool swap = swapsSides(orientation);
    base::Picture out{swap ? in.height : in.width, swap ? in.width : in.height, {}};
    out.pixels.resize(in.pixels.size());
    for (int y = 0; y < out.height; ++y) {
        for (int x = 0; x < out.width; ++x) {
            int column = swap ? y : x;
            int row = swap ? x : y;
            if (orientation == 2 || orientation == 3 || orientation == 7 || orientation == 8) {
                column = in.width - 1 - column;
            }
            if (orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7) {
                row = in.height - 1 - row;
            }
            out.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(out.width) +
                       static_cast<std::size_t>(x)] =
                in.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(in.width) +
                          static_cast<std::size_t>(column)];
        }
    }
    return out;
}

base::Picture decodeWithin(const std::wstring& path, Size limit) {
    ComPtr<IWICImagingFactory> factory;
    check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&factory)));
    const ComPtr<IStream> file = opened(path);
    const std::string start = startOf(file.Get());
    if (isTooLarge(jpegPixelCount(start))) { // Wine's decoder makes room for all pixels before it tells the size
        throw DecodingFailed();
    }
    const int orientation = exifOrientation(start);
    const ComPtr<IWICBitmapFrameDecode> frame = firstFrame(factory.Get(), file.Get());

    Size source;
    check(frame->GetSize(&source.width, &source.height)); // from the file's header, before any pixel
    if (source.width == 0 || source.height == 0 || isTooLarge(std::uint64_t{source.width} * source.height)) {
        throw DecodingFailed();
    }
    if (swapsSides(orientation)) {
        std::swap(limit.width, limit.height);
    }
    const Size size = fitted(source, limit);

    // The JPEG decoder can shrink while it decodes, but only when the scaler asks it directly. Other formats may hold
    // palette indices, which cannot be averaged, so they are converted first.
    WICPixelFormatGUID format{};
    check(frame->GetPixelFormat(&format));
    const bool isPlainColour = format == GUID_WICPixelFormat24bppBGR || format == GUID_WICPixelFormat8bppGray;
    const ComPtr<IWICBitmapSource> picture =
        isPlainColour ? converted(factory.Get(), scaled(factory.Get(), frame.Get(), size).Get())
                      : scaled(factory.Get(), converted(factory.Get(), frame.Get()).Get(), size);
    base::Picture pixels = pixelsOf(picture.Get(), size);
    return orientation == 1 ? std::move(pixels) : turned(pixels, orientation);
}

} // namespace

std::optional<base::Picture> WicPictureDecoder::decode(std::string_view path, int maxWidth, int maxHeight) {
    if (maxWidth <= 0 || maxHeight <= 0) {
        return std::nullopt;
    }
    try {
        return decodeWithin(nativePath(path), {static_cast<UINT>(maxWidth), static_cast<UINT>(maxHeight)});
    } catch (const std::exception&) { // out of memory too: a preview that does not fit is no preview
        return std::nullopt;
    }
}

} // namespace windows
