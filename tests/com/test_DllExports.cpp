// The server's exports as COM uses them: DllCanUnloadNow against live objects and LockServer.
#include <gtest/gtest.h>

#include "ComTestSupport.h"
#include "support/OleSession.h"

namespace {

using namespace comtest;

ComPtr<IClassFactory> FactoryOf(const GUID& clsid) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    auto get = reinterpret_cast<GetClassObject>(
        reinterpret_cast<void*>(::GetProcAddress(Server::Instance().Module(), "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    if (get) get(clsid, IID_IClassFactory, factory.putVoid());
    return factory;
}

TEST(DllExports, CanUnloadNowOnlyAfterTheLastObjectAndLock) {
    const testsupport::OleSession ole;
    {
        ASSERT_EQ(S_OK, Server::Instance().CanUnloadNow());
        ComPtr<IClassFactory> factory = FactoryOf(tc::com::CLSID_clsLargeNumber);
        ASSERT_TRUE(factory);
        // The class factory is an object of the server too.
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow());
        ComPtr<IDispatch> first;
        ComPtr<IDispatch> second;
        ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IDispatch, first.putVoid()));
        ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IDispatch, second.putVoid()));
        ASSERT_EQ(S_OK, factory->LockServer(TRUE));
        ASSERT_EQ(S_OK, factory->LockServer(TRUE));
        factory.reset();

        // Each step releases or unlocks one thing; the server stays until the last one.
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow()) << "two objects, two locks";
        first.reset();
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow()) << "one object, two locks";
        second.reset();
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow()) << "two locks";
        factory = FactoryOf(tc::com::CLSID_clsLargeNumber);
        ASSERT_TRUE(factory);
        ASSERT_EQ(S_OK, factory->LockServer(FALSE));
        factory.reset();
        EXPECT_EQ(S_FALSE, Server::Instance().CanUnloadNow()) << "one lock";
        factory = FactoryOf(tc::com::CLSID_clsLargeNumber);
        ASSERT_TRUE(factory);
        ASSERT_EQ(S_OK, factory->LockServer(FALSE));
        factory.reset();
        EXPECT_EQ(S_OK, Server::Instance().CanUnloadNow());
    }
}

}  // namespace
