#include "images/textures.h"

#include <SDL_image.h>
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <map>

#include "app/base/main_thread.h"
#include "app/base/window.h"

// Sharing -----------------------------------------------------------------------------------------

// What a file was when its picture was loaded. Two equal versions have the same contents: whoever
// writes a file or changes what may be done with it changes the time too, and cannot set it back.
// Only a second change within one tick of the file system's clock, some milliseconds, is not seen.
struct FileVersion {
    dev_t device;
    ino_t inode;
    off_t size;
    timespec changed;
};

struct SharedTexture {
    FileVersion file;
    SDL_Texture* texture;
};

// The newest texture of each file loaded, by its path. The images and units that show an older one
// keep it. Nothing is looked up here after the close.
static std::map<std::string, SharedTexture> gSharedTextures;

static bool isSameVersion(const FileVersion& a, const FileVersion& b) {
    return a.device == b.device && a.inode == b.inode && a.size == b.size &&
           a.changed.tv_sec == b.changed.tv_sec && a.changed.tv_nsec == b.changed.tv_nsec;
}

// Returns false, and nothing is shared, for what is no regular file: a pipe tells something else
// each time it is read.
static bool readVersion(const char* path, FileVersion& file) {
    struct stat status;
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) return false;
    file = {status.st_dev, status.st_ino, status.st_size, status.st_ctim};
    return true;
}

static SDL_Texture* findShared(const std::string& path, const FileVersion& file) {
    const auto shared = gSharedTextures.find(path);
    const bool isShared =
        shared != gSharedTextures.end() && isSameVersion(shared->second.file, file);
    return isShared ? shared->second.texture : nullptr;
}

// Loading -----------------------------------------------------------------------------------------

// Little-endian, as the numbers of a BMP file are.
static int64_t numberAt(const unsigned char* bytes, int size) {
    uint32_t number = 0;
    for (int i = 0; i < size; i++)
        number |= static_cast<uint32_t>(bytes[i]) << (8 * i);
    return size == 4 ? static_cast<int32_t>(number) : static_cast<int64_t>(number);
}

// Reads the size that the header of a BMP file declares. Returns false for other files. The layout
// is that of BITMAPFILEHEADER with BITMAPCOREHEADER (12 bytes long) or BITMAPINFOHEADER after it;
// a negative height means rows from the top.
static bool readBmpSize(const char* path, int64_t& w, int64_t& h) {
    unsigned char head[26] = {};
    SDL_RWops* file = SDL_RWFromFile(path, "rb");
    if (file == nullptr) return false;
    const bool isRead = SDL_RWread(file, head, sizeof head, 1) == 1;
    SDL_RWclose(file);
    if (!isRead || head[0] != 'B' || head[1] != 'M') return false;
    const bool isOld = numberAt(head + 14, 4) == 12;
    w = isOld ? numberAt(head + 18, 2) : numberAt(head + 18, 4);
    h = isOld ? numberAt(head + 20, 2) : std::abs(numberAt(head + 22, 4));
    return true;
}

// Refuses, with SDL's words for it, a BMP file that declares more pixels than a texture can have:
// SDL_image would fill the memory for them before it found out.
static bool fitsATexture(const char* path) {
    int64_t w = 0, h = 0;
    SDL_RendererInfo info;
    if (SDL_GetRendererInfo(gRenderer, &info) != 0 || !readBmpSize(path, w, h)) return true;
    const int maxW = info.max_texture_width, maxH = info.max_texture_height;
    if ((maxW == 0 || w <= maxW) && (maxH == 0 || h <= maxH)) return true;
    SDL_SetError("Texture dimensions are limited to %dx%d", maxW, maxH);
    return false;
}

// The version is read before the picture: a file that changes meanwhile is loaded anew next time.
// What has failed is not kept: the file may come. Of a pipe nothing is read but by the load.
static SDL_Texture* loadOrShare(const std::string& path) {
    FileVersion file;
    if (!readVersion(path.c_str(), file)) return IMG_LoadTexture(gRenderer, path.c_str());
    SDL_Texture* texture = findShared(path, file);
    if (texture != nullptr) return texture;
    if (fitsATexture(path.c_str())) texture = IMG_LoadTexture(gRenderer, path.c_str());
    if (texture != nullptr) gSharedTextures[path] = {file, texture};
    return texture;
}

static SDL_Texture* loadIfPossible(const std::string& path) {
    if (!gEngineClosed) return loadOrShare(path);
    SDL_SetError("the engine is closed");
    return nullptr;
}

bool loadIsGivenUp() {
    return mainThreadIsClosing() && !onMainThread();
}

SDL_Texture* loadTexture(const std::string& path) {
    SDL_Texture* texture = loadIfPossible(path);
    if (texture == nullptr && !loadIsGivenUp()) {
        std::printf("\n1Unable to load image %s! SDL Error: %s", path.c_str(), SDL_GetError());
    }
    return texture;
}
