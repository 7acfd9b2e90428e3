/* The library as an in-process server: the four entry points a host finds by name after it
 * has loaded libtessaline.so, with the meaning they have for an in-process COM server, and the
 * few calls on the objects they hand out. Plain C, so that any host can use them.
 *
 *   DllGetClassObject   the class object of a class identifier (or, for a host without the
 *                       catalogue, a ProgID), asked for IClassFactory or IUnknown;
 *                       CLASS_E_CLASSNOTAVAILABLE for a class this build doesn't carry or
 *                       that a host can't create.
 *   DllCanUnloadNow     S_OK when no object handed out lives and no lock is held, S_FALSE
 *                       otherwise.
 *   DllRegisterServer   writes the library's classes into the catalogue file that hosts read
 *                       to find them (tessalineCatalogueFile), replacing this library's
 *                       earlier entry.
 *   DllUnregisterServer takes this library's entry out of that file again.
 *
 * Objects are counted: each pointer handed out carries one reference, which the caller gives
 * back with TessalineRelease. An object is made on the thread's widget backend; where the host
 * has installed none, the headless one is installed first, with the library's XML, regular
 * expression and chart services. Every call runs on the host's thread, as the controls do. */
#ifndef TESSALINE_COM_SERVER_H
#define TESSALINE_COM_SERVER_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct TessalineObject TessalineObject;

#define TESSALINE_S_OK 0
#define TESSALINE_S_FALSE 1
#define TESSALINE_E_NOINTERFACE ((int32_t)0x80004002)
#define TESSALINE_E_POINTER ((int32_t)0x80004003)
#define TESSALINE_E_FAIL ((int32_t)0x80004005)
#define TESSALINE_E_INVALIDARG ((int32_t)0x80070057)
#define TESSALINE_CLASS_E_NOAGGREGATION ((int32_t)0x80040110)
#define TESSALINE_CLASS_E_CLASSNOTAVAILABLE ((int32_t)0x80040111)
/* A failed call of a member: the error's number is in the low 16 bits, as automation reports
 * it (0x800A0000 + number). */
#define TESSALINE_E_MEMBER(number) ((int32_t)(0x800A0000u | ((uint32_t)(number)&0xFFFFu)))

#define TESSALINE_IID_IUNKNOWN "00000000-0000-0000-C000-000000000046"
#define TESSALINE_IID_ICLASSFACTORY "00000001-0000-0000-C000-000000000046"
#define TESSALINE_IID_IDISPATCH "00020400-0000-0000-C000-000000000046"

int32_t DllGetClassObject(const char* classId, const char* interfaceId, TessalineObject** object);
int32_t DllCanUnloadNow(void);
int32_t DllRegisterServer(void);
int32_t DllUnregisterServer(void);

/* IUnknown. */
int32_t TessalineQueryInterface(TessalineObject* object, const char* interfaceId,
                                TessalineObject** result);
uint32_t TessalineAddRef(TessalineObject* object);
uint32_t TessalineRelease(TessalineObject* object);

/* IClassFactory on a class object. */
int32_t TessalineCreateInstance(TessalineObject* classObject, TessalineObject* outer,
                                const char* interfaceId, TessalineObject** instance);
int32_t TessalineLockServer(TessalineObject* classObject, int32_t lock);

/* IDispatch by name, values as their text: a property read into a buffer (cut to its size,
 * always ended with 0), a property written from text. */
int32_t TessalineGetProperty(TessalineObject* object, const char* name, char* buffer, size_t size);
int32_t TessalineSetProperty(TessalineObject* object, const char* name, const char* value);

/* The catalogue file that registration writes: $XDG_DATA_HOME/tessaline/catalogue.xml, or
 * ~/.local/share/tessaline/catalogue.xml. The buffer gets the path ended with 0; the result
 * is the path's length. */
size_t tessalineCatalogueFile(char* buffer, size_t size);

#ifdef __cplusplus
}
#endif

#endif
