#pragma once
#include <ctime>
#include <string>
#include <vector>

#include "ODBCConnection.h"

struct PlaceSettings;

// The system's access to the site's transit database: images of a plate around a moment, and
// the two forms that add a row to Transits. One pass, one object, one connection.
class TransitStore {
  public:
    // The monitor names port 1433; the image query leaves the port to the driver.
    static std::string MonitorConnectionString(const PlaceSettings& place);
    static std::string ImageConnectionString(const PlaceSettings& place);
    // Dates as the server reads them: style 103 into an insert, style 120 into a query.
    static std::string InsertDate(std::time_t time);
    static std::string QueryDate(std::time_t time);

    static std::string ImagesStatement(const std::string& plate, std::time_t time);
    static std::string AddTransitStatement(const std::string& plate, const std::string& imageFile,
                                           const std::string& lane, int transitType,
                                           int transitPlace, int blacklist, int completed,
                                           int radarVelocity, std::time_t now);
    struct TransitRecord {
        std::string plate;
        std::string imageFile;
        std::string lane;
        int transitPlace = 0;
        int alarm = 0;
        int radarVelocity = 0;
        int speedLimit = 0;
        int trafficLightStatus = 0;
        std::string machineAddress;
        int syncro = 0;
        std::time_t time = 0;
        std::string note = " ";  // a single blank when the caller gives none
    };
    static std::string AddTransitRecordStatement(const TransitRecord& record);

    int Connect(const std::string& connectionString);
    int QueryImages(const std::string& plate, std::time_t time,
                    std::vector<std::string>& plateImages, std::vector<std::string>& sceneImages);
    int AddTransit(const std::string& plate, const std::string& imageFile, const std::string& lane,
                   int transitType, int transitPlace, int blacklist, int completed,
                   int radarVelocity);
    int AddTransitRecord(const TransitRecord& record);
    void Close();

    // The transit view's lookup: nothing unless the site has an address of at least four
    // characters, else connect without port, query, close.
    static void LoadTransitImages(const PlaceSettings& place, const std::string& plate,
                                  std::time_t time, std::vector<std::string>& plateImages,
                                  std::vector<std::string>& sceneImages);

    ODBCConnection connection;
    int connected = 0;

  private:
    int RunInsert(const std::string& statement);
};
