// The reference program: the SDL calls that any program with one window and one font makes.
//
//     bare_sdl              starts up as the engine does, presents one frame and ends at once
//     bare_sdl picture      draws one picture in that frame
//     bare_sdl COUNT FRAMES draws COUNT pictures FRAMES times and prints the processor time of a
//                           frame in microseconds
//
// The hint SDL_RENDER_BATCHING and the C library's MALLOC_TRIM_THRESHOLD_, MALLOC_TOP_PAD_ and
// MALLOC_MMAP_THRESHOLD_ are taken from the environment, which is where they are tried out.
#include <SDL.h>
#include <SDL_image.h>
#include <SDL_ttf.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

static SDL_Window* gWindow = nullptr;
static SDL_Renderer* gRenderer = nullptr;

static void require(bool succeeded, const char* what) {
    if (succeeded) return;
    std::fprintf(stderr, "%s: %s\n", what, SDL_GetError());
    std::exit(1);
}

static void start() {
    TTF_Init();
    require(TTF_OpenFont("arial.ttf", 12) != nullptr, "font");
    require(SDL_Init(SDL_INIT_TIMER | SDL_INIT_AUDIO | SDL_INIT_VIDEO | SDL_INIT_JOYSTICK |
                     SDL_INIT_HAPTIC | SDL_INIT_GAMECONTROLLER | SDL_INIT_EVENTS) == 0,
            "SDL");
    SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "1");
    gWindow = SDL_CreateWindow("Bare", SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, 640, 480,
                               SDL_WINDOW_SHOWN);
    require(gWindow != nullptr, "window");
    gRenderer =
        SDL_CreateRenderer(gWindow, 1, SDL_RENDERER_ACCELERATED | SDL_RENDERER_PRESENTVSYNC);
    require(gRenderer != nullptr, "renderer");
    SDL_SetRenderDrawColor(gRenderer, 255, 255, 255, 255);
}

static SDL_Texture* loadPicture() {
    SDL_Texture* texture = IMG_LoadTexture(gRenderer, "SysPics/select.bmp");
    require(texture != nullptr, "picture");
    return texture;
}

static void presentOnce(bool withPicture) {
    SDL_RenderClear(gRenderer);
    if (withPicture) {
        SDL_Texture* picture = loadPicture();
        SDL_Rect rect = {0, 0, 0, 0};
        SDL_QueryTexture(picture, nullptr, nullptr, &rect.w, &rect.h);
        SDL_RenderCopy(gRenderer, picture, nullptr, &rect);
    }
    SDL_RenderPresent(gRenderer);
}

static void drawOnce(const std::vector<SDL_Texture*>& textures) {
    SDL_RenderClear(gRenderer);
    for (int i = 0; i < static_cast<int>(textures.size()); i++) {
        const SDL_Rect rect = {i * 37 % 640, i * 53 % 480, 15, 15};
        SDL_RenderCopy(gRenderer, textures[static_cast<size_t>(i)], nullptr, &rect);
    }
    const SDL_Rect corner = {0, 0, 1, 1};
    Uint32 pixel = 0;
    require(SDL_RenderReadPixels(gRenderer, &corner, SDL_PIXELFORMAT_ARGB8888, &pixel,
                                 sizeof pixel) == 0,
            "frame");
}

static void drawFrames(int count, int frames) {
    std::vector<SDL_Texture*> textures;
    for (int i = 0; i < count; i++)
        textures.push_back(loadPicture());
    for (int i = 0; i < 3; i++)
        drawOnce(textures);
    const std::clock_t started = std::clock();
    for (int i = 0; i < frames; i++)
        drawOnce(textures);
    const double seconds = static_cast<double>(std::clock() - started) / CLOCKS_PER_SEC;
    std::printf("%.1f\n", seconds / frames * 1e6);
}

int main(int count, char** arguments) {
    start();
    if (count == 3) {
        drawFrames(std::atoi(arguments[1]), std::atoi(arguments[2]));
    } else {
        presentOnce(count == 2);
    }
    std::fflush(stdout);
    _exit(0);  // at once, as first_frame does
}
