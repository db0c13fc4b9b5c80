#version 440

// The backdrop of the Studio in one pass: gradient, veil, two blurred bands in closed form, mesh, vignette. Noise of
// half a level hides the steps that so dark a gradient would show.

layout(location = 0) in vec2 qt_TexCoord0;
layout(location = 0) out vec4 fragColor;

layout(std140, binding = 0) uniform Parameters {
    mat4 qt_Matrix;
    float qt_Opacity;
    float drift;
    vec2 size;
    vec4 ink;
    vec4 graphite;
    vec4 slate;
    vec4 veilStrong;
    vec4 veilSoft;
    vec4 sweepStrong;
    vec4 sweepSoft;
    vec4 meshTint;
    vec4 vignette;
    float cornerRadius;
};

// Error function, to within 1.5e-7.
float errorFunction(float x) {
    float a = abs(x);
    float t = 1.0 / (1.0 + 0.3275911 * a);
    float series = ((((1.061405429 * t - 1.453152027) * t + 1.421413741) * t - 0.284496736) * t + 0.254829592) * t;
    return sign(x) * (1.0 - series * exp(-a * a));
}

// What a blur leaves of a box from -halfSize to halfSize.
float blurredBox(float distance, float halfSize, float sigma) {
    float scale = 1.0 / (sigma * sqrt(2.0));
    return 0.5 * (errorFunction((distance + halfSize) * scale) - errorFunction((distance - halfSize) * scale));
}

float sweep(vec2 place, vec2 center, float degrees, float height, float sigma) {
    float angle = radians(degrees);
    vec2 away = place - center;
    vec2 along = vec2(cos(angle) * away.x + sin(angle) * away.y, cos(angle) * away.y - sin(angle) * away.x);
    return blurredBox(along.y, height / 2.0, sigma) * blurredBox(along.x, size.x / 2.0, sigma);
}

// Colours of uniforms come premultiplied.
vec3 over(vec3 below, vec4 tint, float strength) {
    return below * (1.0 - tint.a * strength) + tint.rgb * strength;
}

float noise(vec2 place) {
    return fract(52.9829189 * fract(dot(place, vec2(0.06711056, 0.00583715))));
}

// How much of a pixel lies inside the rounded corners.
float insideCorners(vec2 away, vec2 halfSize) {
    vec2 beyond = abs(away) - halfSize + cornerRadius;
    float distance = length(max(beyond, 0.0)) + min(max(beyond.x, beyond.y), 0.0) - cornerRadius;
    return clamp(0.5 - distance, 0.0, 1.0);
}

void main() {
    vec2 place = qt_TexCoord0 * size;
    vec2 middle = size / 2.0;
    float diagonal = dot(qt_TexCoord0, vec2(0.5));
    vec3 color = diagonal < 0.5 ? mix(ink.rgb, graphite.rgb, diagonal * 2.0)
                                : mix(graphite.rgb, slate.rgb, diagonal * 2.0 - 1.0);

    float down = clamp(0.5 * (1.0 - qt_TexCoord0.x) + 0.5 * qt_TexCoord0.y, 0.0, 1.0);
    color = over(color, mix(veilStrong, veilSoft, down), 1.0);

    vec2 strongCenter = middle + vec2(mix(-220.0, 220.0, drift), -140.0);
    color = over(color, sweepStrong, sweep(place, strongCenter, -18.0, 120.0, 28.0));
    vec2 softCenter = middle + vec2(mix(180.0, -180.0, drift), mix(120.0, 180.0, drift));
    color = over(color, sweepSoft, sweep(place, softCenter, 24.0, 80.0, 20.0));

    float across = abs(fract((place.x - place.y + size.y) / 18.0 + 0.5) - 0.5) * 18.0 / sqrt(2.0);
    vec3 white = meshTint.rgb / max(meshTint.a, 0.0001);
    vec3 overlay = mix(2.0 * color * white, 1.0 - 2.0 * (1.0 - color) * (1.0 - white), step(0.5, color));
    color = mix(color, overlay, clamp(1.0 - across, 0.0, 1.0) * meshTint.a);

    color = over(color, vignette, clamp(qt_TexCoord0.y * 2.0 - 1.0, 0.0, 1.0));
    fragColor = vec4(color + (noise(gl_FragCoord.xy) - 0.5) / 255.0, 1.0) * qt_Opacity * insideCorners(place - middle, middle);
}
