#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>

// What a value is. The numbers are written to files.
enum ETCParseType : uint32_t
{
    tcparse_int = 0,
    tcparse_float = 1,
    tcparse_string = 2,
    tcparse_vec3 = 3,
    tcparse_vec4 = 4,
};

// One argument of a keyword: a link of the keyword's chain, which owns it. As an object of this
// class itself it is a parameter of a declaration and carries only its type.
class CTCPARSE_PARAM
{
public:
    explicit CTCPARSE_PARAM(ETCParseType eType);

    // A copy stands alone: all of the source but its place in a chain.
    CTCPARSE_PARAM(const CTCPARSE_PARAM& source);
    CTCPARSE_PARAM& operator=(const CTCPARSE_PARAM&) = delete;

    // Leaves next alone: whoever holds the chain deletes it link by link.
    virtual ~CTCPARSE_PARAM();

    static void* operator new(size_t nBytes);
    static void operator delete(void* pMemory);

    // Makes a copy of the source's own class, which the caller owns.
    static CTCPARSE_PARAM* Duplicate(const CTCPARSE_PARAM& source);

    // Keeps a copy of the name of the host variable that the value was read from; null: none.
    void SetRefName(const char* pszName);

    CTCPARSE_PARAM* next = nullptr; // in the order written
    ETCParseType type;
    uint8_t flag = 0;
    char* refName = nullptr; // owned, see SetRefName
};

class CTCPARSE_INT : public CTCPARSE_PARAM
{
public:
    explicit CTCPARSE_INT(int32_t nValue = 0);

    int32_t value;
};

class CTCPARSE_FLOAT : public CTCPARSE_PARAM
{
public:
    explicit CTCPARSE_FLOAT(float fValue = 0.0F);

    float value;
};

// Text of any bytes. Readers take it up to its NUL, as any C string.
class CTCPARSE_STRING : public CTCPARSE_PARAM
{
public:
    // Copies nLength bytes and adds the NUL.
    CTCPARSE_STRING(const char* pText, size_t nLength);
    explicit CTCPARSE_STRING(const char* pszText = "");
    CTCPARSE_STRING(const CTCPARSE_STRING& source);
    CTCPARSE_STRING& operator=(const CTCPARSE_STRING&) = delete;
    ~CTCPARSE_STRING() override;

    char* value; // owned, never null; not to be replaced
};

class CTCPARSE_VEC3 : public CTCPARSE_PARAM
{
public:
    CTCPARSE_VEC3();
    explicit CTCPARSE_VEC3(const float* pValues); // 3 values

    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

class CTCPARSE_VEC4 : public CTCPARSE_PARAM
{
public:
    CTCPARSE_VEC4();
    explicit CTCPARSE_VEC4(const float* pValues); // 4 values

    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
    float w = 1.0F;
};

// One node of a tree: a call, a declaration or a constant. It owns its parameters, its block and
// the siblings after it, so the first node of a file owns the file's tree: deleting it frees all.
// No operation here recurses, however deep the blocks and however long the chains are.
class CTCPARSE_KEYWORD
{
public:
    static constexpr size_t NAME_BYTES = 40; // with the NUL

    CTCPARSE_KEYWORD() = default;

    // Copies the parameters, the block and the siblings after it too.
    CTCPARSE_KEYWORD(const CTCPARSE_KEYWORD& source);
    CTCPARSE_KEYWORD& operator=(const CTCPARSE_KEYWORD&) = delete;

    // Appends the binary form of this node, its block and its siblings. pFile: borrowed, open for
    // writing. False, with one logged line, when the file took less than all of it.
    virtual bool Save(FILE* pFile) const;

    virtual ~CTCPARSE_KEYWORD();

    static void* operator new(size_t nBytes);
    static void operator delete(void* pMemory);

    // Lower case for calls, declarations and constants. Zero behind the text: names are compared
    // and hashed whole.
    alignas(8) char name[NAME_BYTES] = {};
    CTCPARSE_PARAM* params = nullptr;  // first parameter, owned
    CTCPARSE_KEYWORD* next = nullptr;  // next node of the same block, owned
    CTCPARSE_KEYWORD* block = nullptr; // first node of the block behind the call, owned
    int32_t line = 0;                  // of a call in its file, counted from 1; 0 for others

private:
    // Takes over name and parameters of one node, without its block and siblings.
    void CopyNode(const CTCPARSE_KEYWORD& source);
};
