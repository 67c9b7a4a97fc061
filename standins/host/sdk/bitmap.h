#pragma once

#include "standins/host/sdk/maxtypes.h"
#include "standins/host/sdk/path.h"

using BMMRES = int;
constexpr BMMRES BMMRES_SUCCESS = 0;

/// Four channels of eight bits each.
constexpr int BMM_TRUE_32 = 6;
/// The frame of an image that isn't a sequence.
constexpr int BMM_SINGLEFRAME = -2000000;
constexpr int BMM_CLOSE_COMPLETE = 0;

class BitmapManager;

/// Describes an image that exists or is to be made: its file, its size and the type of its pixels.
class BitmapInfo {
public:
    BitmapInfo() = default;
    explicit BitmapInfo(const MCHAR* name) : name_(name) {}

    int SetName(const MCHAR* name) {
        name_ = name;
        return TRUE;
    }
    int SetType(int type) {
        type_ = type;
        return TRUE;
    }
    int SetWidth(WORD width) {
        width_ = width;
        return TRUE;
    }
    int SetHeight(WORD height) {
        height_ = height;
        return TRUE;
    }
    int SetCurrentFrame(int frame) {
        frame_ = frame;
        return TRUE;
    }

    const MCHAR* Name() const { return name_.data(); }
    int Type() const { return type_; }
    WORD Width() const { return width_; }
    WORD Height() const { return height_; }
    int CurrentFrame() const { return frame_; }
    MaxSDK::Util::Path GetPathEx() const { return MaxSDK::Util::Path(name_.data()); }

private:
    MSTR name_;
    int type_ = 0;
    WORD width_ = 0;
    WORD height_ = 0;
    int frame_ = BMM_SINGLEFRAME;
};

/// An image in memory. To save it, call `OpenOutput`, `Write` and `Close` in this order. The
/// extension of the file selects the format.
class Bitmap {
public:
    Bitmap() = default;
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;
    virtual ~Bitmap() = default;

    virtual BitmapManager* Manager() = 0;
    virtual BMMRES OpenOutput(BitmapInfo* info) = 0;
    virtual BMMRES Write(BitmapInfo* info, int frame = BMM_SINGLEFRAME) = 0;
    virtual int Close(BitmapInfo* info, int flag = BMM_CLOSE_COMPLETE) = 0;

    /// Frees a bitmap made by `BitmapManager::Create`.
    virtual void DeleteThis() = 0;
};

class BitmapManager {
public:
    virtual ~BitmapManager() = default;

    /// Makes a black image of the size and type in `info`. Null if there is no memory for it.
    virtual Bitmap* Create(BitmapInfo* info) = 0;

    /// Fills `info` from the file that it names, or from `filename` if that isn't null.
    virtual BMMRES GetImageInfo(BitmapInfo* info, const MCHAR* filename = nullptr) = 0;
};

// On Windows a variable from another library has to be declared as imported; a function needn't be.
#if defined(_WIN32) && !defined(maxhost_EXPORTS)
#define VSQ_HOST_VARIABLE __declspec(dllimport)
#else
#define VSQ_HOST_VARIABLE
#endif

/// The host owns the manager.
extern VSQ_HOST_VARIABLE BitmapManager* TheManager;
