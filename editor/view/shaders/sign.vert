#version 330 core

uniform vec4 uPlace; // upper left corner, width and depth of the square in the picture, -1 to 1
uniform float uDepth;
uniform float uPoints; // of a side
out vec2 vPoint;

void main()
{
    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    vPoint = corner * uPoints;
    gl_Position = vec4(uPlace.xy + corner * uPlace.zw, uDepth, 1.0);
}
