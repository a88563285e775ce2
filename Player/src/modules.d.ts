declare module "*.xml" {
  const text: string;
  export default text;
}
declare module "*.css";
