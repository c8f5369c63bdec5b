// A request processor to try mirsa-qb with, as a class in a library: "Mirsa.StandIn". What it does
// is told by the message: an echo of what came in, or a failure in one of the steps.
#include <windows.h>

#include <ole2.h>

#include <cwchar>
#include <string>

namespace {

const CLSID standIn = {
    0x6d1f7a10, 0x53c1, 0x4b0e, {0x9a, 0x21, 0x0c, 0x44, 0x7e, 0x19, 0x5b, 0x02}};
constexpr wchar_t classKey[] = L"Software\\Classes\\CLSID\\{6D1F7A10-53C1-4B0E-9A21-0C447E195B02}";
constexpr wchar_t nameKey[] = L"Software\\Classes\\Mirsa.StandIn";
HMODULE library;
LONG alive = 0;

const wchar_t* const methods[] = {L"OpenConnection", L"BeginSession", L"ProcessRequest",
                                  L"EndSession", L"CloseConnection"};
enum Method { Open = 1, Begin, Process, End, Close };

std::wstring environment(const wchar_t* name) {
    wchar_t text[64] = L"";
    GetEnvironmentVariableW(name, text, 64);
    return text;
}

class Processor : public IDispatch {
  public:
    Processor() { InterlockedIncrement(&alive); }
    virtual ~Processor() { InterlockedDecrement(&alive); }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IDispatch)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&m_references));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&m_references);
        if (left == 0)
            delete this;
        return static_cast<ULONG>(left);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                            DISPID* ids) override {
        for (int i = 0; i < 5; ++i) {
            if (_wcsicmp(names[0], methods[i]) == 0) {
                ids[0] = i + 1;
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID method, REFIID, LCID, WORD, DISPPARAMS* given,
                                     VARIANT* result, EXCEPINFO* thrown, UINT*) override {
        const std::wstring trouble = environment(L"STANDIN");
        const auto fail = [&](HRESULT code, const wchar_t* text) {
            thrown->scode = code;
            thrown->bstrDescription = SysAllocString(text);
            return DISP_E_EXCEPTION;
        };
        // The steps have to come in their order, with the right arguments.
        const auto text = [&](UINT fromLast) {
            const VARIANT& value = given->rgvarg[fromLast];
            return value.vt == VT_BSTR ? std::wstring(value.bstrVal, SysStringLen(value.bstrVal))
                                       : std::wstring(L"?");
        };
        switch (method) {
        case Open:
            if (m_step != 0 || given->cArgs != 2 || text(1) != L"123" || text(0) != L"Mirsa")
                return fail(E_FAIL, L"wrong OpenConnection");
            m_step = Open;
            return S_OK;
        case Begin:
            if (trouble == L"closed")
                return fail(static_cast<HRESULT>(0x80040416), L"QuickBooks is not running");
            if (trouble == L"question")
                Sleep(60000);
            if (m_step != Open || given->cArgs != 2 || !text(1).empty() ||
                given->rgvarg[0].vt != VT_I4 || given->rgvarg[0].lVal != 2)
                return fail(E_FAIL, L"wrong BeginSession");
            m_step = Begin;
            result->vt = VT_BSTR;
            result->bstrVal = SysAllocString(L"ticket");
            return S_OK;
        case Process:
            if (trouble == L"hang")
                Sleep(60000);
            if (trouble == L"crash")
                *static_cast<volatile int*>(nullptr) = 1;
            if (trouble == L"refuse")
                return fail(static_cast<HRESULT>(0x80040400), L"Grüße: unreadable");
            if (trouble == L"lost")
                return fail(E_UNEXPECTED, L"the company was lost");
            if (m_step != Begin || text(1) != L"ticket")
                return fail(E_FAIL, L"wrong ProcessRequest");
            m_step = Process;
            result->vt = VT_BSTR;
            {
                const std::wstring answer = L"<answer>" + text(0) + L"</answer>";
                result->bstrVal = SysAllocStringLen(answer.data(), UINT(answer.size()));
            }
            return S_OK;
        case End:
            return text(0) == L"ticket" ? S_OK : fail(E_FAIL, L"wrong EndSession");
        case Close:
            if (const std::wstring note = environment(L"STANDIN_NOTE"); !note.empty())
                CloseHandle(CreateFileW(note.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0,
                                        nullptr));
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
        }
    }

  private:
    LONG m_references = 1;
    int m_step = 0;
};

class Factory : public IClassFactory {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!IsEqualIID(id, IID_IUnknown) && !IsEqualIID(id, IID_IClassFactory)) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = this;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** object) override {
        auto* made = new Processor;
        const HRESULT result = made->QueryInterface(id, object);
        made->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

LONG setValue(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    HKEY open;
    LONG result = RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_WRITE,
                                  nullptr, &open, nullptr);
    if (result != ERROR_SUCCESS)
        return result;
    result = RegSetValueExW(open, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                            DWORD((value.size() + 1) * sizeof(wchar_t)));
    RegCloseKey(open);
    return result;
}

} // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH)
        library = instance;
    return TRUE;
}

HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID id, REFIID interfaceId, void** object) {
    static Factory factory;
    return IsEqualCLSID(id, standIn) ? factory.QueryInterface(interfaceId, object)
                                     : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT STDAPICALLTYPE DllCanUnloadNow() {
    return alive == 0 ? S_OK : S_FALSE;
}

HRESULT STDAPICALLTYPE DllRegisterServer() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(library, path, MAX_PATH);
    const std::wstring server = std::wstring(classKey) + L"\\InprocServer32";
    const bool done = setValue(std::wstring(nameKey) + L"\\CLSID", nullptr,
                               L"{6D1F7A10-53C1-4B0E-9A21-0C447E195B02}") == ERROR_SUCCESS &&
                      setValue(server, nullptr, path) == ERROR_SUCCESS &&
                      setValue(server, L"ThreadingModel", L"Apartment") == ERROR_SUCCESS;
    return done ? S_OK : E_FAIL;
}
}
