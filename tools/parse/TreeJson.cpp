#include "tools/parse/TreeJson.h"

#include "engine/files/CJsonWriter.h"

#include <vector>

namespace
{

void WriteFloats(CJsonWriter& json, std::initializer_list<float> values)
{
    json.BeginArray();
    for (const float fValue : values)
    {
        json.WriteNumber(fValue);
    }
    json.End();
}

void WriteValue(CJsonWriter& json, const CTCPARSE_PARAM& param)
{
    switch (param.type)
    {
    case tcparse_int:
        json.WriteNumber(static_cast<const CTCPARSE_INT&>(param).value);
        break;
    case tcparse_float:
        json.WriteNumber(static_cast<const CTCPARSE_FLOAT&>(param).value);
        break;
    case tcparse_string:
        json.WriteText(static_cast<const CTCPARSE_STRING&>(param).value);
        break;
    case tcparse_vec3:
    {
        const auto& vector = static_cast<const CTCPARSE_VEC3&>(param);
        WriteFloats(json, {vector.x, vector.y, vector.z});
        break;
    }
    case tcparse_vec4:
    {
        const auto& vector = static_cast<const CTCPARSE_VEC4&>(param);
        WriteFloats(json, {vector.x, vector.y, vector.z, vector.w});
        break;
    }
    }
}

// Writes a node but for its block and its end, which the caller adds.
void BeginNode(CJsonWriter& json, const CTCPARSE_KEYWORD& node)
{
    static constexpr const char* NAMES[] = {"int", "float", "string", "vec3", "vec4"};
    json.BeginObject();
    json.WriteKey("name");
    json.WriteText(node.name);
    json.WriteKey("params");
    json.BeginArray();
    for (const CTCPARSE_PARAM* pParam = node.params; pParam != nullptr; pParam = pParam->next)
    {
        json.BeginObject();
        json.WriteKey("type");
        json.WriteText(NAMES[pParam->type]);
        json.WriteKey("value");
        WriteValue(json, *pParam);
        json.End();
    }
    json.End();
}

} // namespace

std::string MakeTreeJson(const CTCPARSE_KEYWORD* pTree)
{
    if (pTree == nullptr)
    {
        return "[]\n";
    }
    CJsonWriter json;
    // A loop and not a recursion, since blocks may be nested deeper than the stack allows.
    std::vector<const CTCPARSE_KEYWORD*> around; // nodes whose block is being written
    const CTCPARSE_KEYWORD* pNode = pTree;
    json.BeginLines(1);
    while (pNode != nullptr)
    {
        BeginNode(json, *pNode);
        if (pNode->block != nullptr)
        {
            json.WriteKey("block");
            json.BeginLines(1);
            around.push_back(pNode);
            pNode = pNode->block;
            continue;
        }
        json.End();
        while (pNode->next == nullptr && !around.empty())
        {
            pNode = around.back();
            // The block ends here, and then the node that it belongs to.
            around.pop_back();
            json.End();
            json.End();
        }
        pNode = pNode->next;
    }
    json.End();
    return json.GetText();
}
