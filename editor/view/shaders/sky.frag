#version 330 core

in vec3 vRay;
uniform vec4 uTop;
uniform vec4 uBottom;
uniform vec2 uRise;   // see SKY_RISE and SKY_FALL
uniform vec3 uDither; // see DITHER
out vec4 oColor;

// As GetSkyColor.
void main()
{
    float fRise = vRay.y * inversesqrt(dot(vRay, vRay));
    float fUp = clamp(fRise, 0.0, 1.0);
    vec3 color = mix(uBottom.rgb, uTop.rgb, fUp * (1.0 + uRise.x) / (fUp + uRise.x));
    color *= 1.0 - uRise.y * clamp(-fRise, 0.0, 1.0);
    oColor = vec4(color + (fract(dot(gl_FragCoord.xy, uDither.xy)) - 0.5) * uDither.z, 1.0);
}
