#version 330 core

in vec3 vRay;
uniform vec4 uTop;
uniform vec4 uBottom;
uniform float uRise; // see SKY_RISE
uniform vec3 uDither; // see DITHER
out vec4 oColor;

// As GetSkyColor.
void main()
{
    float fUp = clamp(vRay.y * inversesqrt(dot(vRay, vRay)), 0.0, 1.0);
    vec3 color = mix(uBottom.rgb, uTop.rgb, fUp * (1.0 + uRise) / (fUp + uRise));
    oColor = vec4(color + (fract(dot(gl_FragCoord.xy, uDither.xy)) - 0.5) * uDither.z, 1.0);
}
