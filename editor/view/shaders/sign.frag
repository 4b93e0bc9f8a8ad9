#version 330 core

in vec2 vPoint;
uniform int uRows[11]; // a bit for each point, the first one at the left
uniform vec4 uColor;
out vec4 oColor;

void main()
{
    ivec2 point = ivec2(vPoint) - 1; // a point of the dark square is on every side
    bool bInside = point == clamp(point, ivec2(0), ivec2(10));
    bool bSet = bInside && ((uRows[clamp(point.y, 0, 10)] >> clamp(point.x, 0, 10)) & 1) != 0;
    oColor = bSet ? vec4(uColor.rgb, 1.0) : vec4(0.09, 0.10, 0.12, 0.8);
}
