#version 330 core

in float vHeight;
uniform vec4 uTop;
uniform vec4 uBottom;
out vec4 oColor;

void main()
{
    oColor = vec4(mix(uBottom.rgb, uTop.rgb, clamp(vHeight, 0.0, 1.0)), 1.0);
}
