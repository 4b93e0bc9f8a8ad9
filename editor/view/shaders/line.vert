#version 330 core

layout(location = 0) in vec3 aPosition;
layout(location = 1) in vec4 aColor;
uniform mat4 uMatrix;
out vec4 vColor;

void main()
{
    vColor = aColor;
    gl_Position = uMatrix * vec4(aPosition, 1.0);
    gl_Position.z -= 0.0004 * gl_Position.w; // lines on the ground win over it
}
