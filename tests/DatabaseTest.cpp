// The ODBC layer, the transit store and the connection monitor against a real driver manager
// (unixODBC) and real drivers: the SQLite ODBC driver registered under the name "SQL Server",
// so the system's own connection strings and statements reach a database, and FreeTDS for a
// server that cannot be reached.
#include <atomic>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "TestSupport.h"
#include "core/EventQueue.h"
#include "core/PlaceSettings.h"
#include "core/Project.h"
#include "database/CheckDBThread.h"
#include "database/ODBCConnection.h"
#include "database/ODBCException.h"
#include "database/ODBCRecord.h"
#include "database/TransitStore.h"
#include "platform/TcpSocket.h"
#include "platform/Ticks.h"
#include "platform/WorkerThread.h"

namespace {

// A site database: a SQLite file behind the driver name "SQL Server", with the dialect
// extension that gives it CONVERT. The driver manager reads its driver list once per process,
// so the alias is set before the first ODBC call of the test.
class SqliteSite {
  public:
    SqliteSite() {
        WriteFileText(dir_.File("odbcinst.ini"),
                      std::string("[SQL Server]\nDriver=") + SQLITE_ODBC_DRIVER +
                          "\n\n[SQLite3]\nDriver=" + SQLITE_ODBC_DRIVER + "\n");
        WriteFileText(dir_.File("odbc.ini"), "");
        ::setenv("ODBCSYSINI", dir_.Path().c_str(), 1);
        ::setenv("ODBCINI", dir_.File("odbc.ini").c_str(), 1);
    }

    // The database name carries the driver's extension option: the system puts it into the
    // connection string unchanged.
    PlaceSettings Place() const {
        PlaceSettings place;
        place.placedbip = "127.0.0.1";
        place.placedbname = dir_.File("site.db") + ";LoadExt=" + SQLITE_DIALECT_EXTENSION;
        place.placedbusername = "sa";
        place.placedbpassword = "secret";
        return place;
    }
    std::string ConnectionString() const { return TransitStore::ImageConnectionString(Place()); }
    void Run(const std::vector<std::string>& statements) const {
        ODBCConnection connection;
        connection.SQLAlloc();
        ASSERT_EQ(connection.DriverConnect(ConnectionString()), 1);
        for (const auto& statement : statements)
            ASSERT_EQ(connection.Execute(statement), 1) << statement;
        connection.Close();
    }
    void CreateImages() const {
        Run(
            {"CREATE TABLE Images (ID INTEGER, ImgPath VARCHAR(1000), Plate VARCHAR(512), "
             "TimeOCR TEXT, TimeImg TEXT, DTimeRed INTEGER, DTimeYellow INTEGER, IDSite INTEGER, "
             "PosImage INTEGER, SceneImg INTEGER, DATETIME TEXT)"});
    }

  private:
    TempDir dir_;
};

std::time_t LocalMoment(int year, int month, int day, int hour, int minute, int second) {
    std::tm moment{};
    moment.tm_year = year - 1900;
    moment.tm_mon = month - 1;
    moment.tm_mday = day;
    moment.tm_hour = hour;
    moment.tm_min = minute;
    moment.tm_sec = second;
    moment.tm_isdst = -1;
    return std::mktime(&moment);
}

std::string ImageRow(int id, const std::string& path, const std::string& plate,
                     const std::string& time, int position, int scene) {
    return "INSERT INTO Images VALUES (" + std::to_string(id) + ", '" + path + "', '" + plate +
           "', '" + time + "', '" + time + "', 0, 0, 7, " + std::to_string(position) + ", " +
           std::to_string(scene) + ", NULL)";
}

}  // namespace

TEST(OdbcLayer, ExecutesQueriesAndReadsEveryColumnType) {
    SqliteSite site;
    site.Run({"CREATE TABLE T (Name VARCHAR(40), Count INTEGER, Ratio REAL, Seen TIMESTAMP)",
              "INSERT INTO T VALUES ('first  ', 1, 0.5, '2026-11-23 08:09:10')",
              "INSERT INTO T VALUES ('second', 2, 1.25, '2026-12-31 23:59:58')"});
    ODBCConnection connection;
    connection.SQLAlloc();
    connection.SetConnectionTimeout(5);
    EXPECT_EQ(connection.connectiontimeout, 5);
    ASSERT_EQ(connection.DriverConnect(site.ConnectionString()), 1);
    // A driver connection runs with its own time-outs, whatever was set before.
    EXPECT_EQ(connection.logintimeout, 10);
    EXPECT_EQ(connection.connectiontimeout, 10);
    EXPECT_EQ(connection.connected, 1);

    EXPECT_EQ(connection.Execute("UPDATE T SET Count = Count + 10"), 1);
    EXPECT_EQ(connection.rows, 2);

    ODBCRecord record;
    record.Open(connection);
    ASSERT_EQ(record.Query("SELECT Name, Count, Ratio, Seen FROM T ORDER BY Count"), 1);
    EXPECT_EQ(record.GetColumnCount(), 4);
    EXPECT_EQ(record.GetColumn("count"), 1);
    EXPECT_EQ(record.GetColumn("SEEN"), 3);
    EXPECT_EQ(record.GetColumn("Missing"), -1);
    std::vector<std::string> names;
    std::vector<int> counts;
    while (record.eof == 0) {
        std::string name;
        int count = 0;
        double ratio = 0;
        std::tm seen{};
        ASSERT_EQ(record.GetString(0, name), 1);
        ASSERT_EQ(record.GetInt(1, count), 1);
        ASSERT_EQ(record.GetDouble(2, ratio), 1);
        ASSERT_EQ(record.GetTimestamp("seen", seen), 1);
        names.push_back(name);
        counts.push_back(count);
        if (count == 11) {
            EXPECT_DOUBLE_EQ(ratio, 0.5);
            EXPECT_EQ(seen.tm_year, 2026);
            EXPECT_EQ(seen.tm_mon, 10);
            EXPECT_EQ(seen.tm_mday, 23);
            EXPECT_EQ(seen.tm_hour, 8);
            EXPECT_EQ(seen.tm_min, 9);
            EXPECT_EQ(seen.tm_sec, 10);
        }
        record.MoveNext();
    }
    EXPECT_EQ(names, (std::vector<std::string>{"first  ", "second"}));
    EXPECT_EQ(counts, (std::vector<int>{11, 12}));
    EXPECT_EQ(record.eof, 1);
    EXPECT_EQ(record.bof, 0);
    record.Close();
    EXPECT_EQ(record.hstmt, nullptr);
    connection.Close();
    EXPECT_EQ(connection.connected, 0);
    EXPECT_EQ(connection.hdbc, nullptr);
}

TEST(OdbcLayer, EmptyResultsFailuresAndUnopenedObjects) {
    SqliteSite site;
    site.Run({"CREATE TABLE T (Name VARCHAR(40))"});
    ODBCConnection connection;
    connection.SQLAlloc();
    ASSERT_EQ(connection.DriverConnect(site.ConnectionString()), 1);

    ODBCRecord record;
    record.Open(connection);
    ASSERT_EQ(record.Query("SELECT Name FROM T"), 1);
    EXPECT_EQ(record.eof, 1);
    EXPECT_EQ(record.bof, 1);
    EXPECT_EQ(record.Query("SELECT Nothing FROM Nowhere"), 0);
    record.Close();
    EXPECT_THROW(
        {
            std::string text;
            record.GetString(0, text);
        },
        ODBCException);

    // A failing statement answers 0 and the connection stays usable.
    EXPECT_EQ(connection.Execute("INSERT INTO Nowhere VALUES (1)"), 0);
    EXPECT_EQ(connection.Execute("INSERT INTO T VALUES ('kept')"), 1);
    EXPECT_EQ(connection.rows, 1);
    connection.Close();

    ODBCConnection never;
    never.Close();
    EXPECT_EQ(never.connected, 0);
    EXPECT_EQ(never.DriverConnect(site.ConnectionString()), 0);

    ODBCConnection wrong;
    wrong.SQLAlloc();
    EXPECT_EQ(wrong.DriverConnect("Driver={No Such Driver};Database=x;"), 0);
    EXPECT_EQ(wrong.connected, 0);
    wrong.SQLFree();
    EXPECT_EQ(wrong.henv, nullptr);
}

TEST(OdbcLayer, TheCursorMovesBothWaysAndMarksItsEnds) {
    SqliteSite site;
    site.Run({"CREATE TABLE T (N INTEGER)", "INSERT INTO T VALUES (1)", "INSERT INTO T VALUES (2)",
              "INSERT INTO T VALUES (3)"});
    ODBCConnection connection;
    connection.SQLAlloc();
    ASSERT_EQ(connection.DriverConnect(site.ConnectionString()), 1);
    ODBCRecord record;
    record.Open(connection);
    ASSERT_EQ(record.Query("SELECT N FROM T ORDER BY N"), 1);
    auto current = [&record] {
        int value = 0;
        record.GetInt(0, value);
        return value;
    };
    EXPECT_EQ(current(), 1);
    record.MoveLast();
    EXPECT_EQ(record.eof, 1);
    EXPECT_EQ(record.bof, 0);
    EXPECT_EQ(current(), 3);
    EXPECT_EQ(record.MovePrevious(), 1);
    EXPECT_EQ(record.eof, 0);
    EXPECT_EQ(current(), 2);
    record.MoveFirst();
    EXPECT_EQ(record.bof, 1);
    EXPECT_EQ(record.eof, 0);
    EXPECT_EQ(current(), 1);
    EXPECT_EQ(record.MoveNext(), 1);
    EXPECT_EQ(record.bof, 0);
    EXPECT_EQ(record.MoveNext(), 1);
    EXPECT_EQ(current(), 3);
    EXPECT_EQ(record.MoveNext(), 0);
    EXPECT_EQ(record.eof, 1);
}

TEST(TransitStore, StatementsAndConnectionStringsAreTheServersForm) {
    ::setenv("TZ", "UTC", 1);
    ::tzset();
    PlaceSettings place;
    place.placedbip = "10.0.0.5";
    place.placedbname = "Transits";
    place.placedbusername = "corvane";
    place.placedbpassword = "pw";
    EXPECT_EQ(TransitStore::MonitorConnectionString(place),
              "Driver={SQL Server};Server=10.0.0.5,1433;Trusted_Connection=no;Database=Transits;"
              "Uid=corvane;Pwd=pw;");
    EXPECT_EQ(TransitStore::ImageConnectionString(place),
              "Driver={SQL Server};Server=10.0.0.5;Trusted_Connection=no;Database=Transits;"
              "Uid=corvane;Pwd=pw;");

    // Ten seconds either side of a reading just after midnight cross the date.
    const std::time_t reading = LocalMoment(2026, 1, 1, 0, 0, 4);
    EXPECT_EQ(TransitStore::ImagesStatement("AB123CD", reading),
              "SELECT ID, ImgPath, Plate, CONVERT(DATETIME,TimeOCR,121), "
              "CONVERT(DATETIME,TimeImg,121), DTimeRed, DTimeYellow, IDSite, PosImage, SceneImg "
              "FROM Images WHERE (Plate = 'AB123CD') AND (TimeImg >= CONVERT(DATETIME,'2025-12-31 "
              "23:59:54',120)) AND (TimeImg <= CONVERT(DATETIME,'2026-01-01 00:00:14',120)) ORDER "
              "BY PosImage ASC");
    EXPECT_EQ(TransitStore::AddTransitStatement("AB123CD", "img.jpg", "Lane1", 1, 7, 0, 1, 88,
                                                LocalMoment(2026, 3, 9, 14, 5, 6)),
              "INSERT INTO Transits (IDocal, PlateOCR, ImageFile, TransitLane,TransitType,"
              "TransitPlace,VehicleType,CountryID,Completed,Blacklist,WrongDestination,Delay,"
              "TransitTime,RadarTime,RadarVelocity) VALUES (-2, 'AB123CD', 'img.jpg', 'Lane1', 1, "
              "7, -2, -2, 1,0, 0, 0,CONVERT(DATETIME,'09/03/2026 14:05:06',103), "
              "CONVERT(DATETIME,'09/03/2026 14:05:06',103),88)");
    TransitStore::TransitRecord record;
    record.plate = "ZR874TX";
    record.imageFile = "a.jpg";
    record.lane = "Lane2";
    record.transitPlace = 3;
    record.alarm = 1;
    record.radarVelocity = 72;
    record.speedLimit = 50;
    record.trafficLightStatus = 2;
    record.machineAddress = "192.168.1.9";
    record.syncro = 0;
    record.time = LocalMoment(2026, 11, 23, 9, 0, 0);
    EXPECT_EQ(TransitStore::AddTransitRecordStatement(record),
              "INSERT INTO Transits (IDLocal, PlateOCR, ImageFile, TransitLane,TransitPlace,"
              "TransitTime,Alarm,RadarTime,RadarVelocity,SpeedLimit,TrafficLightStatus,IPMachine,"
              "Syncro,Note) VALUES (-1, 'ZR874TX', 'a.jpg', 'Lane2', 3, CONVERT(DATETIME, "
              "'23/11/2026 09:00:00', 103), 1, CONVERT(DATETIME, '23/11/2026 09:00:00', 103), 72, "
              "50, 2, '192.168.1.9', 0, ' ')");
}

TEST(TransitStore, ImagesOfAPlateComeSortedAndSplitIntoPlateAndScene) {
    SqliteSite site;
    site.CreateImages();
    const std::time_t reading = LocalMoment(2026, 11, 23, 23, 59, 55);
    site.Run({ImageRow(1, "scene_b.jpg  ", "AB123CD", "2026-11-24 00:00:03", 4, 1),
              ImageRow(2, "plate_a.jpg", "AB123CD", "2026-11-23 23:59:50", 1, 0),
              ImageRow(3, "scene_a.jpg", "AB123CD", "2026-11-23 23:59:56", 2, 1),
              ImageRow(4, "plate_b.jpg", "AB123CD", "2026-11-24 00:00:05", 3, 0),
              ImageRow(5, "too_late.jpg", "AB123CD", "2026-11-24 00:00:06", 0, 0),
              ImageRow(6, "other.jpg", "ZR874TX", "2026-11-23 23:59:55", 0, 0)});

    TransitStore store;
    ASSERT_EQ(store.Connect(site.ConnectionString()), 1);
    std::vector<std::string> plates{"stale"};
    std::vector<std::string> scenes;
    EXPECT_EQ(store.QueryImages("AB123CD", reading, plates, scenes), 1);
    EXPECT_EQ(plates, (std::vector<std::string>{"plate_a.jpg", "plate_b.jpg"}));
    EXPECT_EQ(scenes, (std::vector<std::string>{"scene_a.jpg", "scene_b.jpg"}));

    EXPECT_EQ(store.QueryImages("XX000XX", reading, plates, scenes), 0);
    EXPECT_TRUE(plates.empty());
    EXPECT_TRUE(scenes.empty());
    EXPECT_EQ(store.connected, 1);
    store.Close();

    // The transit view looks only when the site has an address of four characters or more.
    PlaceSettings place = site.Place();
    TransitStore::LoadTransitImages(place, "AB123CD", reading, plates, scenes);
    EXPECT_EQ(plates.size(), 2u);
    place.placedbip = "abc";
    TransitStore::LoadTransitImages(place, "AB123CD", reading, plates, scenes);
    EXPECT_TRUE(plates.empty());
    EXPECT_TRUE(scenes.empty());
}

TEST(TransitStore, AFailedStatementLeavesTheStoreDisconnectedUntilTheNextConnect) {
    SqliteSite site;
    TransitStore store;
    std::vector<std::string> plates, scenes;
    EXPECT_EQ(store.QueryImages("AB123CD", std::time(nullptr), plates, scenes), 0);
    EXPECT_EQ(store.AddTransit("AB123CD", "a.jpg", "Lane1", 0, 7, 0, 1, 0), 0);

    ASSERT_EQ(store.Connect(site.ConnectionString()), 1);
    // No Images table: the query fails and the store counts itself disconnected.
    EXPECT_EQ(store.QueryImages("AB123CD", std::time(nullptr), plates, scenes), 0);
    EXPECT_EQ(store.connected, 0);
    site.CreateImages();
    EXPECT_EQ(store.QueryImages("AB123CD", std::time(nullptr), plates, scenes), 0);
    store.Close();

    ASSERT_EQ(store.Connect(site.ConnectionString()), 1);
    EXPECT_EQ(store.AddTransitRecord(TransitStore::TransitRecord{}), 0);  // no Transits table
    EXPECT_EQ(store.connected, 0);
    store.Close();

    EXPECT_EQ(store.Connect("Driver={SQL Server};Database=/no/such/folder/site.db;"), 0);
    EXPECT_EQ(store.connection.henv, nullptr);
}

namespace {

struct Monitor {
    Monitor() { project.mainframe = &events; }
    // The states posted until the time is up.
    std::vector<int> States(std::chrono::milliseconds span) {
        std::vector<int> states;
        const auto end = std::chrono::steady_clock::now() + span;
        while (std::chrono::steady_clock::now() < end)
            events.Drain(
                [&](const EventQueue::Event& event) {
                    if (event.id == ID_DB_STATUS)
                        states.push_back(event.value);
                },
                std::chrono::milliseconds(50));
        return states;
    }
    void SetPlace(const PlaceSettings& place) {
        std::lock_guard<std::mutex> lock(project.settingsmutex);
        project.place = place;
    }
    EventQueue events;
    Project project;
};

}  // namespace

TEST(CheckDBThread, NotDefinedIsPostedEveryPassAndAGoodAddressConnects) {
    SqliteSite site;
    Monitor monitor;
    CheckDBThread thread(&monitor.events, &monitor.project);
    thread.Run();
    // No address: -1 at once and again on the next pass, 5 s later.
    EXPECT_EQ(monitor.States(std::chrono::milliseconds(5600)), (std::vector<int>{-1, -1}));
    monitor.SetPlace(site.Place());
    EXPECT_EQ(monitor.States(std::chrono::milliseconds(5600)), (std::vector<int>{1}));

    // Connected, the thread waits in steps of 1.2 s; a stop is noticed within one step.
    const uint32_t asked = platform::GetTickCount();
    thread.Delete();
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), asked), 1400u);
}

TEST(CheckDBThread, AFirstPassThatConnectsPostsNothing) {
    SqliteSite site;
    Monitor monitor;
    monitor.SetPlace(site.Place());
    CheckDBThread thread(&monitor.events, &monitor.project);
    thread.Run();
    EXPECT_TRUE(monitor.States(std::chrono::milliseconds(1500)).empty());
    EXPECT_STREQ(CheckDBThread::StatusText(1), "Database Connection: CONNECTED");
    EXPECT_STREQ(CheckDBThread::StatusText(2), "Database Connection: checking...");
}

TEST(CheckDBThread, AnUnreachableServerIsReportedOnceThroughFreeTds) {
    // The system's own driver list, where setup registered FreeTDS as "SQL Server"; the
    // driver manager reads it once a process, so this test needs a process of its own.
    if (std::getenv("ODBCSYSINI") != nullptr)
        GTEST_SKIP() << "another test of this process changed the driver list";
    std::string drivers;
    ASSERT_TRUE(::system("odbcinst -q -d -n 'SQL Server' | grep -qi tds") == 0)
        << "FreeTDS is not registered as \"SQL Server\" (./setup.sh registers it)";
    Monitor monitor;
    PlaceSettings place;
    place.placedbip = "127.0.0.1";  // nothing listens on 1433 here
    place.placedbname = "Transits";
    place.placedbusername = "sa";
    place.placedbpassword = "pw";
    monitor.SetPlace(place);
    CheckDBThread thread(&monitor.events, &monitor.project);
    thread.Run();
    EXPECT_EQ(monitor.States(std::chrono::milliseconds(6500)), (std::vector<int>{0}));
    EXPECT_STREQ(CheckDBThread::StatusText(0), "Database Connection: NOT CONNECTED");
}

TEST(CheckDBThread, AServerThatAcceptsAndStaysSilentCostsTheLoginTimeOutAndNoMore) {
    // FreeTDS as "SQL Server" from the system's driver list, and a listener on the server's
    // port that takes connections and never says a word.
    if (std::getenv("ODBCSYSINI") != nullptr)
        GTEST_SKIP() << "another test of this process changed the driver list";
    ASSERT_TRUE(::system("odbcinst -q -d -n 'SQL Server' | grep -qi tds") == 0)
        << "FreeTDS is not registered as \"SQL Server\" (./setup.sh registers it)";
    platform::TcpSocket silent = platform::TcpSocket::Listen("127.0.0.1", 1433);
    if (!silent.IsOpen())
        GTEST_SKIP() << "TCP 1433 is taken on this machine";
    std::atomic<bool> listening{true};
    std::vector<platform::TcpSocket> held;
    std::thread acceptor([&] {
        while (listening) {
            platform::TcpSocket peer = silent.Accept(100);
            if (peer.IsOpen())
                held.push_back(std::move(peer));
        }
    });
    Monitor monitor;
    PlaceSettings place;
    place.placedbip = "127.0.0.1";
    place.placedbname = "Transits";
    place.placedbusername = "sa";
    place.placedbpassword = "pw";
    monitor.SetPlace(place);

    // The first pass gives up after the 10 s login time-out, not minutes later.
    auto thread = std::make_unique<CheckDBThread>(&monitor.events, &monitor.project);
    const uint32_t started = platform::GetTickCount();
    thread->Run();
    std::vector<int> states;
    while (states.empty() && platform::ElapsedTicks(platform::GetTickCount(), started) < 20000u)
        states = monitor.States(std::chrono::milliseconds(200));
    EXPECT_EQ(states, std::vector<int>{0});
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), started), 15000u);

    // On the way out a monitor stuck in the driver is left behind after its grace time.
    platform::SleepMs(5500);  // the second pass is inside the driver's connect now
    CheckDBThread* stuck = thread.get();
    const uint32_t asked = platform::GetTickCount();
    platform::StopOrAbandon(thread, platform::kExitStopLimitMs);
    EXPECT_LT(platform::ElapsedTicks(platform::GetTickCount(), asked), 4000u);
    EXPECT_TRUE(platform::AnyWorkerAbandoned());
    // The abandoned thread ends by itself once the driver gives up; wait for it here so that
    // nothing it still touches goes away under it.
    while (stuck->IsRunning() && platform::ElapsedTicks(platform::GetTickCount(), asked) < 20000u)
        platform::SleepMs(50);
    EXPECT_FALSE(stuck->IsRunning());
    listening = false;
    acceptor.join();
}
