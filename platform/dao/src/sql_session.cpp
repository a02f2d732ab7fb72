#include "orma/dao/sql_session.h"

#include "connection.h"
#include "orma/bundle/configuration.h"

namespace dao {

CSqlSession::CSqlSession() : CSqlSession(nullptr) {}

CSqlSession::CSqlSession(const char* name) : name_(name != nullptr ? name : "default") {}

CSqlSession::~CSqlSession() = default;

int CSqlSession::GetDBServerType() const {
  try {
    return connectionSettings(*orma::Configuration::current()).server;
  } catch (const DatabaseError&) {
    return kDbServerNone;
  }
}

std::shared_ptr<Connection> CSqlSession::connection() {
  const ConnectionSettings settings = connectionSettings(*orma::Configuration::current());
  if (!connection_ || connection_->isStale() || !(connection_->settings() == settings)) {
    return freshConnection();
  }
  return connection_;
}

std::shared_ptr<Connection> CSqlSession::freshConnection() {
  connection_.reset();  // the old one is gone even when there will be no new one
  connection_ = Connection::open(connectionSettings(*orma::Configuration::current()));
  return connection_;
}

}  // namespace dao
