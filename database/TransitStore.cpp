#include "TransitStore.h"

#include <cstdarg>
#include <cstdio>

#include "ODBCRecord.h"
#include "core/PlaceSettings.h"
#include "platform/Sound.h"

namespace {

constexpr int kImageRange = 10;  // seconds either side of the reading

std::string FormatText(const char* format, ...) __attribute__((format(printf, 1, 2)));

std::string FormatText(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    const int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    std::string text(length > 0 ? static_cast<size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

std::tm LocalTime(std::time_t time) {
    std::tm local{};
    localtime_r(&time, &local);
    return local;
}

std::string TrimRight(std::string text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.pop_back();
    return text;
}

}  // namespace

std::string TransitStore::MonitorConnectionString(const PlaceSettings& place) {
    return FormatText(
        "Driver={SQL Server};Server=%s,1433;Trusted_Connection=no;Database=%s;Uid=%s;Pwd=%s;",
        place.placedbip.c_str(), place.placedbname.c_str(), place.placedbusername.c_str(),
        place.placedbpassword.c_str());
}

std::string TransitStore::ImageConnectionString(const PlaceSettings& place) {
    return FormatText(
        "Driver={SQL Server};Server=%s;Trusted_Connection=no;Database=%s;Uid=%s;Pwd=%s;",
        place.placedbip.c_str(), place.placedbname.c_str(), place.placedbusername.c_str(),
        place.placedbpassword.c_str());
}

std::string TransitStore::InsertDate(std::time_t time) {
    const std::tm local = LocalTime(time);
    char text[64];
    std::strftime(text, sizeof text, "%d/%m/%Y %H:%M:%S", &local);
    return text;
}

std::string TransitStore::QueryDate(std::time_t time) {
    const std::tm local = LocalTime(time);
    return FormatText("%04d-%02d-%02d %02d:%02d:%02d", local.tm_year + 1900, local.tm_mon + 1,
                      local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
}

std::string TransitStore::ImagesStatement(const std::string& plate, std::time_t time) {
    return FormatText(
        "SELECT ID, ImgPath, Plate, CONVERT(DATETIME,TimeOCR,121), "
        "CONVERT(DATETIME,TimeImg,121), DTimeRed, DTimeYellow, IDSite, PosImage, SceneImg FROM "
        "Images WHERE (Plate = '%s') AND (TimeImg >= CONVERT(DATETIME,'%s',120)) AND (TimeImg "
        "<= CONVERT(DATETIME,'%s',120)) ORDER BY PosImage ASC",
        plate.c_str(), QueryDate(time - kImageRange).c_str(),
        QueryDate(time + kImageRange).c_str());
}

std::string TransitStore::AddTransitStatement(const std::string& plate,
                                              const std::string& imageFile, const std::string& lane,
                                              int transitType, int transitPlace, int blacklist,
                                              int completed, int radarVelocity, std::time_t now) {
    const std::string date = InsertDate(now);
    return FormatText(
        "INSERT INTO Transits (IDocal, PlateOCR, ImageFile, "
        "TransitLane,TransitType,TransitPlace,VehicleType,CountryID,Completed,Blacklist,"
        "WrongDestination,Delay,TransitTime,RadarTime,RadarVelocity) VALUES (%d, '%s', '%s', "
        "'%s', %d, %d, -2, -2, %d,%d, 0, 0,CONVERT(DATETIME,'%s',103), "
        "CONVERT(DATETIME,'%s',103),%d)",
        -2, plate.c_str(), imageFile.c_str(), lane.c_str(), transitType, transitPlace, completed,
        blacklist, date.c_str(), date.c_str(), radarVelocity);
}

std::string TransitStore::AddTransitRecordStatement(const TransitRecord& record) {
    const std::string date = InsertDate(record.time);
    return FormatText(
        "INSERT INTO Transits (IDLocal, PlateOCR, ImageFile, "
        "TransitLane,TransitPlace,TransitTime,Alarm,RadarTime,RadarVelocity,SpeedLimit,"
        "TrafficLightStatus,IPMachine,Syncro,Note) VALUES (%d, '%s', '%s', '%s', %d, "
        "CONVERT(DATETIME, '%s', 103), %d, CONVERT(DATETIME, '%s', 103), %d, %d, %d, '%s', %d, "
        "'%s')",
        -1, record.plate.c_str(), record.imageFile.c_str(), record.lane.c_str(),
        record.transitPlace, date.c_str(), record.alarm, date.c_str(), record.radarVelocity,
        record.speedLimit, record.trafficLightStatus, record.machineAddress.c_str(), record.syncro,
        record.note.c_str());
}

int TransitStore::Connect(const std::string& connectionString) {
    connection.SQLAlloc();
    connected = 0;
    connection.SetConnectionTimeout(5);
    if (connection.DriverConnect(connectionString) == 0) {
        platform::Beep(1550, 250);
        connection.SQLFree();
        return 0;
    }
    connected = 1;
    return 1;
}

int TransitStore::QueryImages(const std::string& plate, std::time_t time,
                              std::vector<std::string>& plateImages,
                              std::vector<std::string>& sceneImages) {
    plateImages.clear();
    sceneImages.clear();
    if (connected == 0)
        return 0;
    ODBCRecord record;
    record.Open(connection);
    if (record.Query(ImagesStatement(plate, time)) == 0) {
        connected = 0;
        return 0;
    }
    bool reached = false;
    while (record.eof == 0) {
        reached = true;
        int id = 0, red = 0, yellow = 0, site = 0, position = 0, scene = 0;
        std::string path, rowPlate, timeOcr, timeImage;
        const bool read = record.GetInt(0, id) && record.GetString(1, path) &&
                          record.GetString(2, rowPlate) && record.GetString(3, timeOcr) &&
                          record.GetString(4, timeImage) && record.GetInt(5, red) &&
                          record.GetInt(6, yellow) && record.GetInt(7, site) &&
                          record.GetInt(8, position) && record.GetInt(9, scene);
        if (!read)
            break;
        (scene != 0 ? sceneImages : plateImages).push_back(TrimRight(path));
        record.MoveNext();
    }
    record.Close();
    return reached ? 1 : 0;
}

int TransitStore::RunInsert(const std::string& statement) {
    if (connected == 0)
        return 0;
    if (connection.Execute(statement) == 0) {
        platform::Beep(1500, 250);
        connected = 0;
        return 0;
    }
    return 1;
}

int TransitStore::AddTransit(const std::string& plate, const std::string& imageFile,
                             const std::string& lane, int transitType, int transitPlace,
                             int blacklist, int completed, int radarVelocity) {
    return RunInsert(AddTransitStatement(plate, imageFile, lane, transitType, transitPlace,
                                         blacklist, completed, radarVelocity, std::time(nullptr)));
}

int TransitStore::AddTransitRecord(const TransitRecord& record) {
    return RunInsert(AddTransitRecordStatement(record));
}

void TransitStore::Close() {
    connection.Close();
    connected = 0;
}

void TransitStore::LoadTransitImages(const PlaceSettings& place, const std::string& plate,
                                     std::time_t time, std::vector<std::string>& plateImages,
                                     std::vector<std::string>& sceneImages) {
    plateImages.clear();
    sceneImages.clear();
    if (place.placedbip.size() < 4)
        return;
    TransitStore store;
    store.Connect(ImageConnectionString(place));
    if (store.connected != 0)
        store.QueryImages(plate, time, plateImages, sceneImages);
    store.Close();
}
