#version 330 core

out float vHeight;

void main()
{
    vec2 corner = vec2((gl_VertexID << 1) & 2, gl_VertexID & 2);
    vHeight = corner.y;
    gl_Position = vec4(corner * 2.0 - 1.0, 0.99999, 1.0);
}
