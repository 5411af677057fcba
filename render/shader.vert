// Colours each point by its height: the low end of the range pure red, its top pure blue, a linear
// blend through purple between them. Heights outside the range are clamped by the pipeline.

uniform mat4 modelView;
uniform mat3 modelViewNormal;
uniform mat4 mvp;
uniform mat4 projectionMatrix;
uniform mat4 viewportMatrix;
uniform float fieldOfView;
uniform float fieldOfViewVertical;
uniform float m_min;
uniform float m_max;
uniform float m_scaleFactor;
uniform float m_diff;
uniform vec4 m_color;
uniform float pointSize;

out vec3 viewspacePositionVSOutput;
out vec3 viewspaceNormalVSOutput;
out vec3 viewspaceTangVSOutput;
out vec3 viewspaceBitangVSOutput;
out vec4 colorVSOutput;

vec3 hsv2rgb(vec3 hsv)
{
    vec4 k = vec4(1.0, 2.0 / 3.0, 1.0 / 3.0, 3.0);
    vec3 p = abs(fract(hsv.xxx + k.xyz) * 6.0 - k.www);
    return hsv.z * mix(k.xxx, clamp(p - k.xxx, 0.0, 1.0), hsv.y);
}

vec3 distanceToRGB(float distance)
{
    return hsv2rgb(vec3((1.0 - distance) * 226.0 / 360.0, 1.0, 1.0));
}

vec3 hsv_to_rgb(float h, float s, float v)
{
    return hsv2rgb(vec3(h, s, v));
}

void vertexcode()
{
    // A height of zero is coloured like any other: it may be a measured value or stand for "nothing
    // here". Which points exist at all is decided before they get here.
    float normalized = (vertexMC.z - m_min) * m_scaleFactor;
    colorVSOutput = vec4(1.0 - normalized, 0.0, normalized, 1.0);
}
