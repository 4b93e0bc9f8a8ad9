#version 330 core

in vec4 vColor;
uniform float uStrength;
out vec4 oColor;

void main()
{
    oColor = vec4(vColor.rgb, vColor.a * uStrength);
}
