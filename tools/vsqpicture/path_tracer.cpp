#include "tools/vsqpicture/path_tracer.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <thread>
#include <vector>

#include "tools/vsqpicture/random_numbers.h"

namespace vsqpicture {
namespace {

constexpr float kPi = 3.14159265f;
constexpr float kFar = 1e30f;
constexpr int kBounces = 3;
constexpr int kThroughTransparent = 32;  // surfaces that a path may pass without a bounce

// A direction around `axis`: `cosine` along it, and `turn` times a full turn around it.
Vec3 around(Vec3 axis, float cosine, float turn) {
    const Vec3 other = std::abs(axis.x) < 0.7f ? Vec3{1, 0, 0} : Vec3{0, 1, 0};
    const Vec3 first = normalized(cross(axis, other));
    const Vec3 second = cross(axis, first);
    const float sine = std::sqrt(std::max(0.0f, 1 - cosine * cosine));
    return axis * cosine + first * (sine * std::cos(2 * kPi * turn)) +
           second * (sine * std::sin(2 * kPi * turn));
}

Vec3 mirrored(Vec3 direction, Vec3 normal) {
    return direction - normal * (2 * dot(direction, normal));
}

// How a surface reflects at one place.
struct Reflection {
    Vec3 normal;
    Vec3 diffuse;
    Vec3 specular;
    float exponent = 0;       // of the highlight; 0 for a mirror
    float diffuse_share = 1;  // how often a path goes on diffusely
};

class Tracer {
public:
    Tracer(const RayScene& scene, const Sky& sky, double units_per_metre)
        : scene_(scene), sky_(sky), metres_per_unit_(static_cast<float>(1 / units_per_metre)) {
        for (std::size_t i = 0; i < scene.light_triangles().size(); ++i) {
            const LightTriangle& triangle = scene.light_triangles()[i];
            if (lights_.empty() || lights_.back().object != triangle.object) {
                lights_.push_back({triangle.object, i, 0, 0});
            }
            ++lights_.back().triangles;
            lights_.back().area += triangle.area;
            areas_.push_back(lights_.back().area);
        }
    }

    struct Sample {
        Vec3 light;
        bool hits = false;
    };

    Sample trace(Ray ray, float near, float far, RandomNumbers& random) const;

private:
    // The triangles of an object that shines; they follow one another.
    struct SurfaceLight {
        std::size_t object;
        std::size_t first;
        std::size_t triangles;
        float area;
    };

    std::optional<Hit> hit(Ray& ray, float near, float far, RandomNumbers& random) const;
    Reflection reflection_at(const Hit& hit, Vec3 from) const;
    Vec3 bumped_normal(const Hit& hit) const;
    Vec3 direct_light(const Hit& hit, const Reflection& reflection, Vec3 from,
                      RandomNumbers& random) const;
    Vec3 reflected(const Reflection& reflection, Vec3 from, Vec3 to) const;
    Vec3 light_from(const PointLight& light, const Hit& hit, const Reflection& reflection,
                    Vec3 from) const;
    Vec3 light_from(const SurfaceLight& light, const Hit& hit, const Reflection& reflection,
                    Vec3 from, RandomNumbers& random) const;
    bool reaches(const Hit& hit, Vec3 to_light, float distance) const;
    Ray next_ray(const Hit& hit, const Reflection& reflection, Vec3 from, Vec3& share,
                 bool& is_mirror, RandomNumbers& random) const;

    const RayScene& scene_;
    const Sky& sky_;
    float metres_per_unit_;
    std::vector<SurfaceLight> lights_;
    std::vector<float> areas_;  // of each light triangle and those before it in its light
};

Tracer::Sample Tracer::trace(Ray ray, float near, float far, RandomNumbers& random) const {
    Sample sample;
    Vec3 share{1, 1, 1};
    bool sees_lights = true;  // otherwise their light was added before, as direct light
    for (int bounce = 0; bounce <= kBounces; ++bounce) {
        const std::optional<Hit> found = hit(ray, near, far, random);
        if (!found) {
            sample.light +=
                share * (bounce == 0 ? sky_.seen(ray.direction) : sky_.light(ray.direction));
            return sample;
        }
        sample.hits = true;
        if (found->surface->kind == Surface::Kind::kMeshLight) {
            if (sees_lights) {
                sample.light += share * found->radiance;
            }
            return sample;
        }
        // The file's normal points into the surface, beyond what smoothing does: it is inside out.
        constexpr float kInwards = -0.5f;
        if (dot(found->normal, found->face_normal) < kInwards) {
            return sample;
        }
        const Reflection reflection = reflection_at(*found, ray.direction);
        sample.light += share * direct_light(*found, reflection, ray.direction, random);
        ray = next_ray(*found, reflection, ray.direction, share, sees_lights, random);
        near = 0;
        far = kFar;
        if (largest(share) <= 0) {
            return sample;
        }
    }
    return sample;
}

// The first surface that isn't passed because it is transparent there.
std::optional<Hit> Tracer::hit(Ray& ray, float near, float far, RandomNumbers& random) const {
    std::optional<Hit> found = scene_.trace(ray, near, far);
    for (int passed = 0; found && found->surface->opacity && passed < kThroughTransparent;
         ++passed) {
        const Texture::Sample opacity =
            found->surface->opacity->at(found->u, found->v, found->vertex_colour);
        if (random.one() < luminance(opacity.colour) * opacity.alpha) {
            break;
        }
        near = found->distance + scene_.margin();
        found = scene_.trace(ray, near, far);
    }
    return found;
}

// Plastic has a clear coat: it reflects a small share of what comes from the front, and all of what
// comes at a flat angle, coloured by the specular colour. The rest goes through it.
Reflection Tracer::reflection_at(const Hit& hit, Vec3 from) const {
    constexpr float kFromFront = 0.04f;
    const Surface& surface = *hit.surface;
    Reflection reflection;
    reflection.normal = surface.bump ? bumped_normal(hit) : hit.normal;
    const float slant = 1 - std::clamp(-dot(reflection.normal, from), 0.0f, 1.0f);
    const float coat = kFromFront + (1 - kFromFront) * std::pow(slant, 5.0f);
    reflection.specular = surface.specular.at(hit.u, hit.v, hit.vertex_colour).colour * coat;
    reflection.diffuse = surface.diffuse.at(hit.u, hit.v, hit.vertex_colour).colour *
                         std::max(0.0f, 1 - largest(reflection.specular));
    constexpr float kMirror = 0.02f;  // roughness below which a surface mirrors
    if (surface.roughness >= kMirror) {
        const float rough = std::min(surface.roughness, 1.0f);
        reflection.exponent = 2 / (rough * rough);
    }
    const float diffuse = luminance(reflection.diffuse);
    const float specular = luminance(reflection.specular);
    reflection.diffuse_share = diffuse + specular > 0 ? diffuse / (diffuse + specular) : 1;
    return reflection;
}

// The height changes along u and v tilt the normal.
Vec3 Tracer::bumped_normal(const Hit& hit) const {
    constexpr float kStep = 1.0f / 512;
    const ColourInput& map = *hit.surface->bump;
    const auto height = [&](float u, float v) {
        return luminance(map.at(u, v, hit.vertex_colour).colour) * hit.surface->bump_height;
    };
    const float here = height(hit.u, hit.v);
    const float slope_u = (height(hit.u + kStep, hit.v) - here) / kStep;
    const float slope_v = (height(hit.u, hit.v + kStep) - here) / kStep;
    const float size_u = dot(hit.along_u, hit.along_u);
    const float size_v = dot(hit.along_v, hit.along_v);
    if (!(size_u > 0 && size_v > 0)) {
        return hit.normal;
    }
    Vec3 tilt = hit.along_u * (slope_u / size_u) + hit.along_v * (slope_v / size_v);
    // An edge of the image has no finite slope.
    constexpr float kSteepest = 0.7f;
    if (const float slope = length(tilt); slope > kSteepest) {
        tilt = tilt * (kSteepest / slope);
    }
    const Vec3 bumped = normalized(hit.normal - tilt);
    return dot(bumped, hit.face_normal) > 0.05f ? bumped : hit.normal;
}

Vec3 Tracer::direct_light(const Hit& hit, const Reflection& reflection, Vec3 from,
                          RandomNumbers& random) const {
    // A few lights are all asked; of many, one for each sample is enough.
    constexpr std::size_t kFew = 8;
    const std::size_t points = scene_.point_lights().size();
    const std::size_t count = points + lights_.size();
    Vec3 sum;
    for (std::size_t i = 0; i < std::min(count, kFew); ++i) {
        const std::size_t light =
            count <= kFew
                ? i
                : std::min(static_cast<std::size_t>(random.one() * static_cast<float>(count)),
                           count - 1);
        sum += light < points ? light_from(scene_.point_lights()[light], hit, reflection, from)
                              : light_from(lights_[light - points], hit, reflection, from, random);
    }
    return count <= kFew ? sum : sum * (static_cast<float>(count) / kFew);
}

// Through one point of the light's surface.
Vec3 Tracer::light_from(const SurfaceLight& light, const Hit& hit, const Reflection& reflection,
                        Vec3 from, RandomNumbers& random) const {
    const auto first = areas_.begin() + static_cast<std::ptrdiff_t>(light.first);
    const auto last = first + static_cast<std::ptrdiff_t>(light.triangles);
    const float wanted = random.one() * light.area;
    const auto [along, second] = random.pair();
    const auto chosen = std::min(std::lower_bound(first, last, wanted), last - 1);
    const LightTriangle& triangle =
        scene_.light_triangles()[static_cast<std::size_t>(chosen - areas_.begin())];
    const float root = std::sqrt(along);
    const Vec3 place = triangle.corners[0] * (1 - root) +
                       triangle.corners[1] * (root * (1 - second)) +
                       triangle.corners[2] * (root * second);
    const Vec3 way = place - hit.place;
    const float distance = length(way);
    const Vec3 to = normalized(way);
    if (!(distance > 0) || !reaches(hit, to, distance)) {
        return {};
    }
    // Lights shine to both sides: the triangles of round ones face inwards.
    const float cosine = std::abs(dot(triangle.normal, to));
    return reflected(reflection, from, to) * triangle.radiance *
           (cosine * light.area / (distance * distance));
}

Vec3 Tracer::light_from(const PointLight& light, const Hit& hit, const Reflection& reflection,
                        Vec3 from) const {
    const Vec3 way = light.place - hit.place;
    const float distance = length(way);
    const Vec3 to = normalized(way);
    const float metres = distance * metres_per_unit_;
    if (!(metres > 0) || !reaches(hit, to, distance)) {
        return {};
    }
    constexpr float kCandelaPerLumen = 1 / (4 * kPi);
    return reflected(reflection, from, to) * light.power_lumen *
           (kCandelaPerLumen / (metres * metres));
}

// The share of the light from `to` that goes back along `from`, times the cosine at the surface.
Vec3 Tracer::reflected(const Reflection& reflection, Vec3 from, Vec3 to) const {
    const float cosine = dot(reflection.normal, to);
    if (!(cosine > 0)) {
        return {};
    }
    Vec3 share = reflection.diffuse * (1 / kPi);
    if (reflection.exponent > 0) {
        const float along = dot(mirrored(from, reflection.normal), to);
        if (along > 0) {
            share += reflection.specular *
                     (std::pow(along, reflection.exponent) * (reflection.exponent + 2) / (2 * kPi));
        }
    }
    return share * cosine;
}

// Whether nothing opaque is between the hit and a light.
bool Tracer::reaches(const Hit& hit, Vec3 to_light, float distance) const {
    const float side = dot(hit.face_normal, to_light) < 0 ? -1.0f : 1.0f;
    const Ray ray{hit.place + hit.face_normal * (side * scene_.margin()), to_light};
    if (!scene_.has_opacity_maps()) {
        return !scene_.is_blocked(ray, 0, distance - 2 * scene_.margin());
    }
    float near = 0;
    for (int passed = 0; passed <= kThroughTransparent; ++passed) {
        const std::optional<Hit> between = scene_.trace(ray, near, distance - 2 * scene_.margin());
        if (!between) {
            return true;
        }
        if (!between->surface->opacity) {
            return false;
        }
        // Half transparent is opaque here; a random choice would need more samples.
        const Texture::Sample opacity =
            between->surface->opacity->at(between->u, between->v, between->vertex_colour);
        if (luminance(opacity.colour) * opacity.alpha >= 0.5f) {
            return false;
        }
        near = between->distance + scene_.margin();
    }
    return false;
}

Ray Tracer::next_ray(const Hit& hit, const Reflection& reflection, Vec3 from, Vec3& share,
                     bool& is_mirror, RandomNumbers& random) const {
    Vec3 direction;
    const float choice = random.one();
    const auto [first, second] = random.pair();
    is_mirror = false;
    if (choice < reflection.diffuse_share) {
        direction = around(reflection.normal, std::sqrt(first), second);
        share = share * reflection.diffuse * (1 / reflection.diffuse_share);
    } else {
        const Vec3 mirror = mirrored(from, reflection.normal);
        is_mirror = reflection.exponent == 0;
        direction = is_mirror
                        ? mirror
                        : around(mirror, std::pow(first, 1 / (reflection.exponent + 1)), second);
        share = share * reflection.specular * (1 / (1 - reflection.diffuse_share));
    }
    // An interpolated normal can lead into the surface.
    if (dot(direction, hit.face_normal) < 0) {
        direction = mirrored(direction, hit.face_normal);
    }
    return {hit.place + hit.face_normal * scene_.margin(), normalized(direction)};
}

std::uint8_t display_byte(float linear) {
    const float value = std::clamp(linear, 0.0f, 1.0f);
    const float shown =
        value <= 0.0031308f ? 12.92f * value : 1.055f * std::pow(value, 1 / 2.4f) - 0.055f;
    return static_cast<std::uint8_t>(shown * 255 + 0.5f);
}

// The mean of a pixel's samples; `hits` is the share of them that hit something.
struct Pixel {
    Vec3 light;
    float hits = 0;
};

std::vector<Pixel> traced_pixels(const RayScene& scene, const Sky& sky, const CameraView& view,
                                 int width, int height, const PictureOptions& options,
                                 double units_per_metre) {
    const Tracer tracer(scene, sky, units_per_metre);
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    std::vector<Pixel> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    std::atomic<int> next_row{0};
    const auto draw_rows = [&] {
        for (int y = next_row++; y < height; y = next_row++) {
            for (int x = 0; x < width; ++x) {
                const std::size_t place =
                    static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                    static_cast<std::size_t>(x);
                Pixel& pixel = pixels[place];
                for (int i = 0; i < options.samples; ++i) {
                    RandomNumbers random(static_cast<std::uint32_t>(options.seed),
                                         static_cast<std::uint32_t>(place),
                                         static_cast<std::uint32_t>(i));
                    const auto [right, down] = random.pair();
                    const float u = (static_cast<float>(x) + right) / static_cast<float>(width);
                    const float v = (static_cast<float>(y) + down) / static_cast<float>(height);
                    const Tracer::Sample sample =
                        tracer.trace(view.ray(u, v, aspect), view.near(), view.far(), random);
                    if (std::isfinite(luminance(sample.light)) &&
                        (sample.hits || !options.transparent)) {
                        pixel.light += sample.light;
                    }
                    pixel.hits += sample.hits ? 1.0f : 0.0f;
                }
                const float part = 1 / static_cast<float>(options.samples);
                pixel.light = pixel.light * part;
                pixel.hits *= part;
            }
        }
    };
    std::vector<std::thread> threads(
        options.threads != 0 ? options.threads : std::max(1u, std::thread::hardware_concurrency()));
    for (std::thread& thread : threads) {
        thread = std::thread(draw_rows);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    return pixels;
}

// What makes the middle brightness of a small picture a middle grey.
float automatic_exposure(const RayScene& scene, const Sky& sky, const CameraView& view,
                         const PictureOptions& options, double units_per_metre) {
    if (!scene.has_lights()) {
        return 1;
    }
    constexpr int kWidth = 64;
    constexpr float kMiddleGrey = 0.18f;
    PictureOptions small = options;
    small.samples = 8;
    const int height = std::clamp(kWidth * options.height / options.width, 8, 128);
    std::vector<float> seen;
    for (const Pixel& pixel :
         traced_pixels(scene, sky, view, kWidth, height, small, units_per_metre)) {
        const float brightness = luminance(pixel.light);
        if (pixel.hits > 0.5f && brightness > 0) {
            seen.push_back(brightness);
        }
    }
    if (seen.empty()) {
        return 1;
    }
    const auto middle = seen.begin() + static_cast<std::ptrdiff_t>(seen.size() / 2);
    std::nth_element(seen.begin(), middle, seen.end());
    return kMiddleGrey / *middle;
}

}  // namespace

Image draw_picture(const RayScene& scene, const Sky& sky, const CameraView& view,
                   const PictureOptions& options, double units_per_metre) {
    const float exposure = options.exposure
                               ? static_cast<float>(std::exp2(*options.exposure))
                               : automatic_exposure(scene, sky, view, options, units_per_metre);
    // Behind a scene with lights of its own there is nothing, which isn't quite black.
    constexpr float kNothing = 0.01f;
    const std::vector<Pixel> pixels =
        traced_pixels(scene, sky, view, options.width, options.height, options, units_per_metre);
    Image image(options.width, options.height);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const Pixel& pixel = pixels[i];
        Vec3 light = pixel.light * exposure;
        if (options.transparent) {
            light = light * (pixel.hits > 0 ? 1 / pixel.hits : 0);
        } else if (scene.has_lights()) {
            light += Vec3{kNothing, kNothing, kNothing} * (1 - pixel.hits);
        }
        std::uint8_t* const shown = &image.pixels[4 * i];
        shown[0] = display_byte(light.x);
        shown[1] = display_byte(light.y);
        shown[2] = display_byte(light.z);
        shown[3] = options.transparent ? static_cast<std::uint8_t>(pixel.hits * 255 + 0.5f) : 255;
    }
    return image;
}

}  // namespace vsqpicture
