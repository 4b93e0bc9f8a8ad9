#version 330 core

uniform vec3 uForward; // where the middle of the picture looks, and its way to the right and the upper edge
uniform vec3 uRight;
uniform vec3 uUp;
out vec3 vRay;

void main()
{
    vec2 corner = vec2((gl_VertexID << 1) & 2, gl_VertexID & 2) * 2.0 - 1.0;
    vRay = uForward + corner.x * uRight + corner.y * uUp;
    gl_Position = vec4(corner, 0.99999, 1.0);
}
