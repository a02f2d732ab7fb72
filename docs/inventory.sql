-- The inventory database: written by ormasim, read by the inventory engine of platform/dao.
-- Portable between SQLite and PostgreSQL. Texts are UTF-8; absent texts are ''.

-- One row: the version of this layout.
CREATE TABLE inventory_version (version INTEGER NOT NULL);
INSERT INTO inventory_version (version) VALUES (2);

-- Subnet views. The root's parent is itself: obj_id and parent_id '102', topo_id 101.
CREATE TABLE subnet (
  obj_id        TEXT PRIMARY KEY,
  parent_id     TEXT NOT NULL,
  topo_id       INTEGER NOT NULL UNIQUE,
  native_id     TEXT NOT NULL,
  label         TEXT NOT NULL,
  type_id       INTEGER NOT NULL,
  topo_class_id INTEGER NOT NULL,
  icon_file     TEXT NOT NULL,
  ex_info       TEXT NOT NULL,
  pos_x         INTEGER NOT NULL,
  pos_y         INTEGER NOT NULL
);
CREATE INDEX subnet_parent ON subnet (parent_id, topo_id);

-- Network elements. dev_id counts from 2; 1 is the management system itself and has no row.
CREATE TABLE device (
  dev_id       BIGINT PRIMARY KEY,
  native_id    TEXT NOT NULL UNIQUE,      -- 'NE=' and dev_id
  node_id      TEXT NOT NULL UNIQUE,      -- native_id behind its first '='
  node_class   TEXT NOT NULL,             -- 'ne' or 'container'
  subnet_id    TEXT NOT NULL REFERENCES subnet (obj_id),
  topo_id      INTEGER NOT NULL,
  main_type    INTEGER NOT NULL,          -- 0 to 65535
  sub_type     INTEGER NOT NULL,          -- 0 to 65535
  ip_address   TEXT NOT NULL,
  name         TEXT NOT NULL,
  version_name TEXT NOT NULL,
  origin       INTEGER NOT NULL,          -- 1: an origin element
  icon_file    TEXT NOT NULL,
  ex_info      TEXT NOT NULL,
  remark       TEXT NOT NULL,
  pos_x        INTEGER NOT NULL,
  pos_y        INTEGER NOT NULL
);
CREATE INDEX device_subnet ON device (subnet_id);

-- Where a device stands, outermost part first.
CREATE TABLE device_location (
  dev_id BIGINT NOT NULL REFERENCES device (dev_id),
  seq    INTEGER NOT NULL,
  part   TEXT NOT NULL,
  PRIMARY KEY (dev_id, seq)
);

-- Frames below a device: resources that are no devices.
CREATE TABLE frame (
  dev_id   BIGINT NOT NULL REFERENCES device (dev_id),
  frame_no INTEGER NOT NULL,
  label    TEXT NOT NULL,
  PRIMARY KEY (dev_id, frame_no)
);

-- Ports, addressed by their place in the device.
CREATE TABLE port (
  port_id BIGINT PRIMARY KEY,
  dev_id  BIGINT NOT NULL REFERENCES device (dev_id),
  frame   INTEGER NOT NULL,
  slot    INTEGER NOT NULL,
  card    INTEGER NOT NULL,
  port    INTEGER NOT NULL,
  name    TEXT NOT NULL,
  type    INTEGER NOT NULL,
  state_a INTEGER NOT NULL,
  state_b INTEGER NOT NULL,
  UNIQUE (dev_id, frame, slot, card, port)
);

-- Links between two ports. kind: 0 virtual, 105 layer 2, 204 IP.
CREATE TABLE link (
  link_id   BIGINT PRIMARY KEY,
  name      TEXT NOT NULL,
  kind      INTEGER NOT NULL,
  attribute INTEGER NOT NULL,
  a_port    BIGINT NOT NULL REFERENCES port (port_id),
  z_port    BIGINT NOT NULL REFERENCES port (port_id)
);

-- The main types of resources.
CREATE TABLE main_type (
  type_id INTEGER PRIMARY KEY,
  name    TEXT NOT NULL
);

-- What stands below an equipped device: frames, slots, cards and ports. A frame also has its row in
-- `frame`, and the port of a link in `port`.
CREATE TABLE resource (
  res_id    BIGINT PRIMARY KEY,      -- made from native_id: see ident.md
  dev_id    BIGINT NOT NULL REFERENCES device (dev_id),
  seq       INTEGER NOT NULL,        -- from 1 in each device; what holds others comes before them
  parent_id BIGINT NOT NULL,         -- res_id of what holds it; dev_id where that is the device
  native_id TEXT NOT NULL UNIQUE,
  main_type INTEGER NOT NULL REFERENCES main_type (type_id),
  sub_type  INTEGER NOT NULL,        -- of a slot: that of the card in it, 0 when it is empty
  name      TEXT NOT NULL,
  UNIQUE (dev_id, seq)
);

-- Attributes of an equipped device or a resource below one.
CREATE TABLE resource_attribute (
  res_id   BIGINT NOT NULL,          -- dev_id, or res_id of a resource
  short_id INTEGER NOT NULL,         -- the lower 32 bits of that, as a signed number
  number   INTEGER NOT NULL,
  value    TEXT NOT NULL,
  PRIMARY KEY (res_id, number)
);
CREATE INDEX resource_attribute_short ON resource_attribute (short_id);

-- The address of an equipped device.
CREATE TABLE device_place (
  dev_id   BIGINT PRIMARY KEY REFERENCES device (dev_id),
  country  TEXT NOT NULL,
  province TEXT NOT NULL,
  city     TEXT NOT NULL,
  address  TEXT NOT NULL
);

-- Who maintains devices, and who maintains which, the first to call first.
CREATE TABLE keeper (
  keeper_id INTEGER PRIMARY KEY,
  name      TEXT NOT NULL,
  dept      TEXT NOT NULL,
  phone_no  TEXT NOT NULL,
  email     TEXT NOT NULL
);
CREATE TABLE device_keeper (
  dev_id    BIGINT NOT NULL REFERENCES device (dev_id),
  seq       INTEGER NOT NULL,
  keeper_id INTEGER NOT NULL REFERENCES keeper (keeper_id),
  PRIMARY KEY (dev_id, seq)
);

-- The catalogue of alarms: what can be raised. seq counts from 0 without gaps.
CREATE TABLE alarm_definition (
  seq           INTEGER PRIMARY KEY,
  group_id      INTEGER NOT NULL,    -- the main type of the devices that raise it
  alarm_id      INTEGER NOT NULL,
  event_type    INTEGER NOT NULL,    -- 1 to 5
  function_type INTEGER NOT NULL,    -- 1 to 10
  severity      INTEGER NOT NULL,    -- 1 critical to 4 warning
  name          TEXT NOT NULL,
  description   TEXT NOT NULL,
  UNIQUE (group_id, alarm_id)
);
CREATE TABLE alarm_reason (
  seq           INTEGER PRIMARY KEY,
  group_id      INTEGER NOT NULL,
  alarm_id      INTEGER NOT NULL,
  reason_id     INTEGER NOT NULL,
  causes        TEXT NOT NULL,
  repair_action TEXT NOT NULL,
  UNIQUE (group_id, alarm_id, reason_id)
);

-- Alarms that an operator has given another severity.
CREATE TABLE redefined_alarm (
  seq          INTEGER PRIMARY KEY,
  group_id     INTEGER NOT NULL,
  alarm_id     INTEGER NOT NULL,
  new_severity INTEGER NOT NULL,
  old_severity INTEGER NOT NULL,
  name         TEXT NOT NULL,
  UNIQUE (group_id, alarm_id)
);

-- The current alarms, in the order in which they were raised.
CREATE TABLE alarm (
  serial_no BIGINT PRIMARY KEY,      -- from 1
  dev_id    BIGINT NOT NULL REFERENCES device (dev_id),
  group_id  INTEGER NOT NULL,
  alarm_id  INTEGER NOT NULL,
  reason_id INTEGER NOT NULL,
  severity  INTEGER NOT NULL,
  raised_at BIGINT NOT NULL,         -- seconds since 1970, UTC
  acked_at  BIGINT NOT NULL,         -- 0: nobody has acknowledged it
  acked_by  TEXT NOT NULL,
  fdn       TEXT NOT NULL,           -- of the resource; '' where the alarm names none
  para      TEXT NOT NULL,
  location  TEXT NOT NULL
);
