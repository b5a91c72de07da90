#include "looks/scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace looks {
namespace {

// Light, red, green, blue.
using Light = std::array<float, 3>;

Light mixed(const Light& a, const Light& b, float t) {
    return {a[0] + (b[0] - a[0]) * t, a[1] + (b[1] - a[1]) * t, a[2] + (b[2] - a[2]) * t};
}

Light scaled(const Light& a, float by) {
    return {a[0] * by, a[1] * by, a[2] * by};
}

Light added(const Light& a, const Light& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

float smoothStep(float from, float to, float x) {
    const float t = std::clamp((x - from) / (to - from), 0.0f, 1.0f);
    return t * t * (3.0f - 2.0f * t);
}

// Values without pattern, 0..1, of whole coordinates.
float grain(int x, int y) {
    auto h =
        static_cast<std::uint32_t>(x) * 374761393u + static_cast<std::uint32_t>(y) * 668265263u;
    h = (h ^ (h >> 13)) * 1274126177u;
    return static_cast<float>((h ^ (h >> 16)) & 0xFFFF) / 65535.0f;
}

float smoothGrain(float x, float y) {
    const float left = std::floor(x);
    const float top = std::floor(y);
    const float u = smoothStep(0.0f, 1.0f, x - left);
    const float v = smoothStep(0.0f, 1.0f, y - top);
    const int i = static_cast<int>(left);
    const int j = static_cast<int>(top);
    const float above = grain(i, j) + (grain(i + 1, j) - grain(i, j)) * u;
    const float below = grain(i, j + 1) + (grain(i + 1, j + 1) - grain(i, j + 1)) * u;
    return above + (below - above) * v;
}

// Coarse and fine structure together, about 0..1.
float cloudy(float x, float y) {
    float sum = 0.0f;
    float weight = 0.5f;
    for (int octave = 0; octave < 5; ++octave, weight *= 0.5f) {
        sum += weight * smoothGrain(x, y);
        x = x * 2.03f + 17.0f;
        y = y * 2.03f + 31.0f;
    }
    return sum;
}

// Coordinates: x from 0 to the picture's aspect, y from 0 at the top to 1.
constexpr float kSunX = 1.27f;
constexpr float kSunY = 0.40f;
constexpr float kShore = 0.66f;

Light skyAt(float x, float y) {
    const float distance = std::hypot(x - kSunX, (y - kSunY) * 1.3f);
    Light sky = mixed({0.10f, 0.24f, 0.55f}, {0.62f, 0.55f, 0.60f}, smoothStep(0.0f, 0.34f, y));
    sky = mixed(sky, {1.0f, 0.62f, 0.30f}, smoothStep(0.20f, 0.50f, y) * 0.85f);
    const float cloud = smoothStep(0.45f, 0.75f, cloudy(x * 1.6f, y * 7.0f));
    const Light lit =
        mixed({0.80f, 0.45f, 0.42f}, {1.0f, 0.80f, 0.55f}, std::exp(-distance * 1.6f));
    sky = mixed(sky, lit, cloud * 0.65f);
    sky = added(sky, scaled({0.75f, 0.48f, 0.20f}, std::exp(-distance * 4.5f)));
    return mixed(sky, {1.0f, 0.97f, 0.86f}, 1.0f - smoothStep(0.040f, 0.052f, distance));
}

// The hills in front of the sky, the nearest last.
Light landAt(float x, float y) {
    struct Ridge {
        float height, roughness, scale, offset;
        Light colour;
    };
    static constexpr std::array<Ridge, 4> kRidges = {
        {{0.40f, 0.16f, 1.3f, 3.0f, {0.62f, 0.48f, 0.55f}},
         {0.48f, 0.14f, 1.9f, 40.0f, {0.42f, 0.36f, 0.48f}},
         {0.53f, 0.16f, 2.6f, 80.0f, {0.22f, 0.27f, 0.30f}},
         {0.60f, 0.12f, 4.0f, 120.0f, {0.10f, 0.17f, 0.11f}}}};
    Light land = skyAt(x, y);
    for (const Ridge& ridge : kRidges) {
        const float crest =
            ridge.height + ridge.roughness * (0.5f - cloudy(x * ridge.scale + ridge.offset, 0.5f));
        const float cover = smoothStep(crest - 0.0015f, crest + 0.0015f, y);
        const float haze = 0.35f * smoothStep(crest, kShore, y) * ridge.colour[2];
        const float shade = 0.85f + 0.3f * (cloudy(x * 30.0f, y * 45.0f + ridge.offset) - 0.5f);
        const float glow = 0.35f * std::exp(-std::abs(x - kSunX) * 2.2f);
        const Light sunlit = scaled({0.55f, 0.26f, 0.08f}, glow * ridge.colour[0]);
        const Light hill =
            added(added(scaled(ridge.colour, shade), sunlit), {haze * 1.2f, haze, haze});
        land = mixed(land, hill, cover);
    }
    return land;
}

Light waterAt(float x, float y) {
    const float depth = (y - kShore) / (1.0f - kShore);
    const float wave = (cloudy(x * 9.0f, y * 160.0f) - 0.5f) * (0.03f + 0.10f * depth);
    const Light seen = landAt(x + wave * 0.4f, kShore - (y - kShore) * 0.85f + wave);
    const float sparkle = smoothStep(0.62f, 0.72f, cloudy(x * 26.0f, y * 210.0f)) *
                          std::exp(-std::abs(x - kSunX) * 7.0f);
    const Light water = mixed(seen, {0.05f, 0.12f, 0.18f}, 0.25f + 0.45f * depth);
    return added(water, scaled({1.0f, 0.75f, 0.42f}, sparkle * (0.9f - 0.5f * depth)));
}

struct Ball {
    float x;
    Light colour;
};
constexpr float kBallY = 0.800f;
constexpr float kRadius = 0.092f;
constexpr std::array<Ball, 8> kBalls = {{{0.17f, {0.92f, 0.92f, 0.92f}},
                                         {0.38f, {0.46f, 0.46f, 0.46f}},
                                         {0.59f, {0.91f, 0.72f, 0.61f}},
                                         {0.80f, {0.70f, 0.48f, 0.36f}},
                                         {1.01f, {0.38f, 0.24f, 0.18f}},
                                         {1.22f, {0.80f, 0.10f, 0.10f}},
                                         {1.43f, {0.08f, 0.52f, 0.22f}},
                                         {1.64f, {0.08f, 0.20f, 0.72f}}}};

// The board that the balls lie on, with their soft shadows.
Light boardAt(float x, float y) {
    const float wood = 0.85f + 0.3f * (cloudy(x * 3.0f, y * 130.0f) - 0.5f);
    Light board = scaled({0.30f, 0.22f, 0.17f}, wood);
    for (const Ball& ball : kBalls) {
        const float distance = std::hypot((x - ball.x + 0.035f) / 1.25f, (y - 0.888f) * 4.0f);
        board = scaled(board, 0.25f + 0.75f * smoothStep(0.03f, 0.13f, distance));
    }
    return board;
}

// Lit by the sun from the right behind the camera, by the sky from above, and from the board.
Light ballAt(const Ball& ball, float u, float v) {
    const float w = std::sqrt(std::max(0.0f, 1.0f - u * u - v * v));
    const float sun = std::max(0.0f, 0.55f * u - 0.45f * v + 0.70f * w);
    const float above = 0.5f - 0.5f * v;
    const Light light = added(
        scaled({1.02f, 0.86f, 0.66f}, sun),
        added(scaled({0.16f, 0.20f, 0.28f}, above), scaled({0.18f, 0.13f, 0.10f}, 1.0f - above)));
    const float shine = 0.55f * std::pow(std::max(0.0f, 0.30f * u - 0.32f * v + 0.90f * w), 60.0f);
    Light out;
    for (std::size_t k = 0; k < 3; ++k)
        out[k] = ball.colour[k] * light[k] + shine;
    return out;
}

Light sceneAt(float x, float y) {
    Light light = y > 0.86f ? boardAt(x, y) : y > kShore ? waterAt(x, y) : landAt(x, y);
    for (const Ball& ball : kBalls) {
        const float u = (x - ball.x) / kRadius;
        const float v = (y - kBallY) / kRadius;
        const float edge = std::hypot(u, v);
        if (edge < 1.02f) {
            light = mixed(ballAt(ball, u / std::max(edge, 1.0f), v / std::max(edge, 1.0f)), light,
                          smoothStep(0.98f, 1.02f, edge));
        }
    }
    return light;
}

}  // namespace

std::vector<float> computedScene(int width, int height) {
    std::vector<float> pixels;
    pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    // The composition is 16:9, whatever the picture is.
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const float x = (static_cast<float>(column) + 0.5f) / static_cast<float>(width);
            const float y = (static_cast<float>(row) + 0.5f) / static_cast<float>(height);
            for (const float value : sceneAt(x * 16.0f / 9.0f, y))
                pixels.push_back(std::clamp(value, 0.0f, 1.0f));
            pixels.push_back(1.0f);
        }
    }
    return pixels;
}

}  // namespace looks
